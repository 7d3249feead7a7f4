/* The main toolkit's interface: certificates from authorities for pairs on PKCS#11 tokens. */

#define QGTK_PREFIX ZRTK_PKCS11_CMP_

#include "toolkit/interface/CmpInterface.h"

using namespace qgtk;

namespace {

/** A caller's identifiers of a signing and a key-management pair. */
struct IdRecords
{
    BINSTR* signing;
    BINSTR* management;

    /** The kinds of pairs that there are records for. Throws BadArgument. */
    std::vector<PairPurpose> wanted() const
    {
        require(signing != nullptr, Code::BadArgument);
        if (!management)
            return {PairPurpose::Signing};
        return {PairPurpose::Signing, PairPurpose::Management};
    }

    /** The identifiers that the records hold. Throws BadArgument. */
    std::vector<TokenPairId> given() const
    {
        std::vector<TokenPairId> ids;
        ids.push_back({PairPurpose::Signing, bytesOfId(signing)});
        if (holdsBytes(management))
            ids.push_back({PairPurpose::Management, bytesOfId(management)});
        return ids;
    }

    /** Fills the records, all or none. */
    void store(const std::vector<TokenPairId>& ids) const
    {
        std::vector<Output> outputs{{signing, ids.front().id}};
        if (ids.size() > 1)
            outputs.push_back({management, ids.back().id});
        assignAll(outputs);
    }

    static SecretBytes bytesOfId(const BINSTR* record)
    {
        const ByteView id = viewOf(record);
        return {id.begin(), id.end()};
    }
};

} // namespace

QGTK_OPERATION(CertRequest)
(void* handle, char* host, int port, char* reference, char* code, char* idNumber, char* authorityFile,
 BINSTR* signId, BINSTR* manageId)
{
    return callOn(handle, [&](Context& context) {
        const IdRecords records{signId, manageId};
        const std::vector<PairPurpose> purposes = records.wanted();
        records.store(requestTokenPairs(context, applicationOf(host, port, idNumber, authorityFile),
                                        {textArgument(reference), textArgument(code)}, purposes));
    });
}

QGTK_OPERATION(CertUpdate)
(void* handle, char* host, int port, bool newKeys, char* idNumber, char* authorityFile, BINSTR* signId,
 BINSTR* manageId)
{
    return callOn(handle, [&](Context& context) {
        const IdRecords records{signId, manageId};
        records.store(updateTokenPairs(context, applicationOf(host, port, idNumber, authorityFile), newKeys,
                                       records.given()));
    });
}

QGTK_OPERATION(CertUpdate2)
(void* handle, char* host, int port, bool newKeys, int option, char* idNumber, char* authorityFile,
 BINSTR* signCertificate, BINSTR* signKey, BINSTR* manageCertificate, BINSTR* manageKey, BINSTR* signId,
 BINSTR* manageId)
{
    return callOn(handle, [&](Context& context) {
        require(option == 0, Code::NotSupported);
        const PairRecords records{signCertificate, signKey, manageCertificate, manageKey};
        const std::vector<CmpPair> pairs = records.given();
        const std::vector<TokenPairId> ids = IdRecords{signId, manageId}.given();
        movePairsToToken(context, applicationOf(host, port, idNumber, authorityFile), newKeys, pairs, ids);
    });
}

QGTK_OPERATION(CertRevoke)(void* handle, char* host, int port, int reason, BINSTR* signId, BINSTR* manageId)
{
    return callOn(handle, [&](Context& context) {
        revokeTokenPairs(context, {pathArgument(host), port}, reason, IdRecords{signId, manageId}.given());
    });
}
