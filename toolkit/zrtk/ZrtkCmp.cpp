/* The main toolkit's interface: certificates from authorities by CMP. */

#define QGTK_PREFIX ZRTK_CMP_

#include "toolkit/interface/CmpInterface.h"

using namespace qgtk;

QGTK_OPERATION(SetProtocol)(void* handle, int type)
{
    return callOn(handle, [&](Context& context) {
        require(type == QG_CMP_HTTP || type == QG_CMP_TCP, Code::NotSupported);
        context.cmp.protocol = static_cast<CmpProtocol>(type);
    });
}

QGTK_OPERATION(SetCA)(void* handle, int authority)
{
    return callOn(handle, [&](Context& context) {
        static_cast<void>(context.configuration().cmpAuthority(authority));
        context.cmp.authority = authority;
    });
}

QGTK_OPERATION(CertRequest)
(void* handle, char* host, int port, char* reference, char* code, char* idNumber, char* authorityFile,
 BINSTR* signCertificate, BINSTR* signKey, BINSTR* manageCertificate, BINSTR* manageKey, BINSTR* authorities)
{
    return callOn(handle, [&](Context& context) {
        const PairRecords records{signCertificate, signKey, manageCertificate, manageKey};
        const std::vector<PairPurpose> purposes = records.wanted();
        const CmpResult result = requestPairs(context, applicationOf(host, port, idNumber, authorityFile),
                                              {textArgument(reference), textArgument(code)}, purposes);
        records.store(result, authorities);
    });
}

QGTK_OPERATION(CertRequest2)
(void* handle, char* host, int port, char* reference, char* code, char* idNumber, char* authorityFile,
 BINSTR* types, BINSTR* certificates, BINSTR* keys, BINSTR* authorities)
{
    return callOn(handle, [&](Context& context) {
        const PairLists lists{types, certificates, keys};
        const std::vector<PairPurpose> purposes = lists.wanted();
        const CmpResult result = requestPairs(context, applicationOf(host, port, idNumber, authorityFile),
                                              {textArgument(reference), textArgument(code)}, purposes);
        lists.store(result, authorities);
    });
}

QGTK_OPERATION(CertUpdate)
(void* handle, char* host, int port, bool newKeys, char* idNumber, char* authorityFile,
 BINSTR* signCertificate, BINSTR* signKey, BINSTR* manageCertificate, BINSTR* manageKey, BINSTR* authorities)
{
    return callOn(handle, [&](Context& context) {
        const PairRecords records{signCertificate, signKey, manageCertificate, manageKey};
        const CmpResult result = updatePairs(context, applicationOf(host, port, idNumber, authorityFile),
                                             newKeys, records.given());
        records.store(result, authorities);
    });
}

QGTK_OPERATION(CertUpdate2)
(void* handle, char* host, int port, bool newKeys, char* idNumber, char* authorityFile, BINSTR* types,
 BINSTR* certificates, BINSTR* keys, BINSTR* authorities)
{
    return callOn(handle, [&](Context& context) {
        const PairLists lists{types, certificates, keys};
        const CmpResult result =
            updatePairs(context, applicationOf(host, port, idNumber, authorityFile), newKeys, lists.given());
        lists.store(result, authorities);
    });
}

QGTK_OPERATION(CertRevoke)
(void* handle, char* host, int port, int reason, BINSTR* signCertificate, BINSTR* signKey,
 BINSTR* manageCertificate, BINSTR* manageKey)
{
    return callOn(handle, [&](Context& context) {
        const PairRecords records{signCertificate, signKey, manageCertificate, manageKey};
        revokePairs(context, {pathArgument(host), port}, reason, records.given());
    });
}

QGTK_OPERATION(CertRevoke2)
(void* handle, char* host, int port, int reason, BINSTR* types, BINSTR* certificates, BINSTR* keys)
{
    return callOn(handle, [&](Context& context) {
        const PairLists lists{types, certificates, keys};
        revokePairs(context, {pathArgument(host), port}, reason, lists.given());
    });
}

QGTK_OPERATION(CertRecovery)
(void* handle, char* host, int port, char* reference, char* code, BINSTR* signCertificate, BINSTR* signKey,
 BINSTR* manageCertificate, BINSTR* manageKey)
{
    return callOn(handle, [&](Context& context) {
        require(manageCertificate && manageKey, Code::BadArgument);
        const CmpPair recovered =
            recoverPair(context, {pathArgument(host), port}, {textArgument(reference), textArgument(code)},
                        pairOf(PairPurpose::Signing, viewOf(signCertificate), viewOf(signKey)));
        assignAll({{manageCertificate, recovered.certificate}, {manageKey, recovered.key}});
    });
}
