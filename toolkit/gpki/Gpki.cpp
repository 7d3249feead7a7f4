/* The government PKI library's interface: what it has beyond the operations of both. */

#define QGTK_PREFIX GPKI_
#define QGTK_CONFIGURATION "gpkiapi.conf"

#include "toolkit/interface/Interface.h"
#include "toolkit/interface/TextGetters.h"

using namespace qgtk;

namespace {

/** Callers hand buffers for a name without their size; they are at least so large. */
constexpr int nameSize = 1024;

/** The only medium here. Throws NoPlatform for smart cards. */
void requireDisk(int medium)
{
    constexpr int disk = 1;
    constexpr int card = 2;
    require(medium != card, Code::NoPlatform);
    require(medium == disk, Code::NotSupported);
}

} // namespace

#include "toolkit/interface/CommonOperations.inc"

QGTK_OPERATION(API_GetInfo)(void* handle, int size, char* information)
{
    return callOn(handle, [&](Context&) { copyCut("1.5", size, information); });
}

QGTK_OPERATION(API_GetVersion)(void* handle, int size, char* version)
{
    return callOn(handle, [&](Context&) { copyCut("1.5", size, version); });
}

QGTK_OPERATION(API_SetOption)(void* handle, int option)
{
    return callOn(handle, [&](Context& context) { context.option = option; });
}

QGTK_OPERATION(API_SetCaPubs)(void* handle, BINSTR* certificates)
{
    return callOn(handle, [&](Context& context) { context.setCaCertificates(viewOf(certificates)); });
}

QGTK_OPERATION(API_FreeCaPubs)(void* handle)
{
    return callOn(handle, [&](Context& context) { context.setCaCertificates({}); });
}

QGTK_OPERATION(API_Str2Time)(void* handle, char* text, time_t* instant)
{
    return callOn(handle, [&](Context&) { store(instant, parseTimeText(std::string(textArgument(text)))); });
}

QGTK_OPERATION(CERT_GetValidity)(void* handle, int size, char* text)
{
    // Callers split the text at its '~': a buffer that has no room for it is refused, one without room for
    // the end is served as far as it goes.
    return callOn(handle, [&](Context& context) {
        const std::string validity = validityOf(context.certificate(), context.charset());
        require(size > static_cast<int>(validity.find('~')) + 1, Code::BufferTooSmall);
        copyCut(validity, size, text);
    });
}

QGTK_OPERATION(CERT_GetPubKeyAlg)(void* handle, int size, char* text)
{
    return getText(handle, size, text, publicKeyAlgorithmOf);
}

QGTK_OPERATION(CERT_GetPubKeyLen)(void* handle, int size, char* text)
{
    return getText(handle, size, text, publicKeyLengthOf);
}

QGTK_OPERATION(CERT_GetPubKey)(void* handle, int size, char* text)
{
    return getText(handle, size, text, publicKeyOf);
}

QGTK_OPERATION(CERT_GetCertPolicyID)(void* handle, int size, char* text)
{
    return getText(handle, size, text, policyIdsOf);
}

QGTK_OPERATION(CERT_AddCert)(void* handle, BINSTR* certificate, BINSTR* certificates)
{
    return callOn(handle, [&](Context&) {
        require(certificates != nullptr, Code::BadArgument);
        const Certificate added(viewOf(certificate));
        const bool empty = !certificates->pData || certificates->nLen == 0;
        assign(certificates, appendCertificate(empty ? ByteView() : viewOf(certificates), added.der()));
    });
}

QGTK_OPERATION(CERT_GetCertCount)(void* handle, BINSTR* certificates, int* count)
{
    return callOn(handle, [&](Context&) {
        store(count, static_cast<int>(splitCertificateList(viewOf(certificates)).size()));
    });
}

QGTK_OPERATION(CERT_GetCert)(void* handle, BINSTR* certificates, int index, BINSTR* certificate)
{
    return callOn(handle, [&](Context&) {
        const std::vector<ByteView> list = splitCertificateList(viewOf(certificates));
        require(index >= 0 && static_cast<std::size_t>(index) < list.size(), Code::CertListIndex);
        assign(certificate, list[static_cast<std::size_t>(index)]);
    });
}

QGTK_OPERATION(STORAGE_Load)(void* handle, char* path)
{
    return callOn(handle, [&](Context& context) { context.token.load(pathArgument(path)); });
}

QGTK_OPERATION(STORAGE_Unload)(void* handle)
{
    return callOn(handle, [&](Context& context) { context.token.unload(); });
}

QGTK_OPERATION(STORAGE_ReadFile)(void* handle, char* path, BINSTR* data)
{
    return callOn(handle, [&](Context&) { assign(data, readFile(pathArgument(path))); });
}

QGTK_OPERATION(STORAGE_WriteFile)(void* handle, char* path, BINSTR* data)
{
    return callOn(handle, [&](Context&) { writeFile(pathArgument(path), viewOf(data)); });
}

QGTK_OPERATION(STORAGE_ReadCert)(void* handle, int medium, char* path, int, BINSTR* certificate)
{
    return callOn(handle, [&](Context&) {
        requireDisk(medium);
        assign(certificate, readCertificateFile(pathArgument(path)));
    });
}

QGTK_OPERATION(STORAGE_ReadPriKey)(void* handle, int medium, char* path, char* password, int, BINSTR* key)
{
    return callOn(handle, [&](Context& context) {
        requireDisk(medium);
        assign(key, readKeyFile(context, pathArgument(path), textArgument(password)));
    });
}

QGTK_OPERATION(STORAGE_WriteCert)(void* handle, int medium, char* path, int, BINSTR* certificate)
{
    return callOn(handle, [&](Context&) {
        requireDisk(medium);
        writeCertificateFile(pathArgument(path), viewOf(certificate));
    });
}

QGTK_OPERATION(STORAGE_WritePriKey)
(void* handle, int medium, char* path, char* password, int, int symAlg, BINSTR* key)
{
    return callOn(handle, [&](Context& context) {
        requireDisk(medium);
        writeKeyFile(context, symAlg, pathArgument(path), textArgument(password), viewOf(key));
    });
}

QGTK_OPERATION(STORAGE_DeleteCert)(void* handle, int medium, char* path, int)
{
    return callOn(handle, [&](Context&) {
        requireDisk(medium);
        deleteFile(pathArgument(path));
    });
}

QGTK_OPERATION(STORAGE_DeletePriKey)(void* handle, int medium, char* path, char* password, int)
{
    return callOn(handle, [&](Context& context) {
        requireDisk(medium);
        deleteKeyFile(context, pathArgument(path), textArgument(password));
    });
}

QGTK_OPERATION(CERT_SetVerifyEnv)
(void* handle, int range, int check, bool useCache, char* time, char* ocspUrl)
{
    return callOn(handle, [&](Context& context) {
        using enum StatusSource;
        const auto instant = referenceTimeOf(time);
        setVerification(context, wholeChainOf(range), sourceOf(check, {None, Crl, Ocsp, OcspElseCrl}),
                        useCache, ocspUrl);
        context.verifySettings.time = instant;
    });
}

QGTK_OPERATION(CERT_Verify)
(void* handle, BINSTR* certificate, int certificateType, char* policies, char* configurationFile, bool sign,
 BINSTR* signerCertificate, BINSTR* signerKey)
{
    return callOn(handle, [&](Context& context) {
        VerifyRequest request =
            verifyRequest(context, certificateType, policies, sign, signerCertificate, signerKey);
        request.configurationFile = textArgument(configurationFile);
        verifyCertificate(context, viewOf(certificate), request);
    });
}

QGTK_OPERATION(CERT_CheckStatByOCSP)
(void* handle, BINSTR* certificate, bool sign, BINSTR* signerCertificate, BINSTR* signerKey, char* url,
 BINSTR* responder, char* date, int* reason)
{
    return callOn(handle, [&](Context& context) {
        const VerifyRequest request = verifyRequest(context, 0, nullptr, sign, signerCertificate, signerKey);
        OcspAnswer answer;
        const auto check = [&] {
            checkStatusByOcsp(context, viewOf(certificate), {std::string(textArgument(url))}, request.signer,
                              answer);
        };
        reportRevocation(check, answer.entry, date, reason);
        if (responder && !answer.responder.empty())
            assign(responder, answer.responder);
    });
}

QGTK_OPERATION(LDAP_GetDataByURL)(void* handle, int dataType, char* url, BINSTR* data)
{
    return fetchByAddress(handle, dataType, url, data);
}

QGTK_OPERATION(LDAP_GetCRLByCert)(void* handle, BINSTR* certificate, BINSTR* list)
{
    return fetchListFor(handle, certificate, list);
}

QGTK_OPERATION(LDAP_GetDataByCN)
(void* handle, char* host, int port, char* commonName, int dataType, char* fullName, BINSTR* data)
{
    constexpr int mostPort = 65535;
    return callOn(handle, [&](Context& context) {
        require(port > 0 && port <= mostPort, Code::BadArgument);
        requireOutput(data);
        ServerAccess servers(context);
        const NamedValue found =
            servers.network.find(pathArgument(host), port, pathArgument(commonName), objectKindOf(dataType));
        assign(data, found.value);
        if (fullName)
            copyCut(context.charset().fromUtf8(found.name), nameSize, fullName);
    });
}

QGTK_OPERATION(LDAP_GetAnyDataByURL)(void* handle, char* attribute, char* url, BINSTR* data)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(data);
        ServerAccess servers(context);
        assign(data, servers.network.fetchAttribute(pathArgument(url), pathArgument(attribute)).front());
    });
}

QGTK_OPERATION(LDAP_GetCertPath)(void* handle, BINSTR* certificate, char* configurationFile, BINSTR* path)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(path);
        assign(path, pathBytes(certificatePath(context, viewOf(certificate),
                                               std::string(textArgument(configurationFile)))));
    });
}
