/* The main toolkit's interface: what it has beyond the operations of both. */

#define QGTK_PREFIX ZRTK_
#define QGTK_CONFIGURATION "ZRCToolkitV30.conf"

#include "toolkit/interface/Interface.h"
#include "toolkit/interface/TextGetters.h"

using namespace qgtk;

namespace {

/** Callers hand these buffers without their size; they are at least so large. */
constexpr int versionSize = 64;
constexpr int informationSize = 1024;
constexpr int timeSize = 25;
constexpr int algorithmSize = 50;
constexpr int lengthSize = 20;

} // namespace

#include "toolkit/interface/CommonOperations.inc"

QGTK_OPERATION(API_GetInfo)(void* handle, char* version, char* information)
{
    return callOn(handle, [&](Context&) {
        copyAllCut({{"3.4.2.20", versionSize, version},
                    {std::string("Quillgate open toolkit, ") + OpenSSL_version(OPENSSL_VERSION),
                     informationSize, information}});
    });
}

QGTK_OPERATION(CERT_SetCaPubs)(void* handle, BINSTR* certificates)
{
    return callOn(handle, [&](Context& context) { context.setCaCertificates(viewOf(certificates)); });
}

QGTK_OPERATION(CERT_FreeCaPubs)(void* handle)
{
    return callOn(handle, [&](Context& context) { context.setCaCertificates({}); });
}

QGTK_OPERATION(CERT_GetValidity)(void* handle, char* from, char* to)
{
    return callOn(handle, [&](Context& context) {
        const Certificate& certificate = context.certificate();
        copyAllCut({{notBeforeOf(certificate, context.charset()), timeSize, from},
                    {notAfterOf(certificate, context.charset()), timeSize, to}});
    });
}

QGTK_OPERATION(CERT_GetPubKey)(void* handle, int size, char* algorithm, char* key)
{
    return callOn(handle, [&](Context& context) {
        const Certificate& certificate = context.certificate();
        copyAllCut({{publicKeyAlgorithmOf(certificate, context.charset()), algorithmSize, algorithm},
                    {publicKeyOf(certificate, context.charset()), size, key}});
    });
}

QGTK_OPERATION(CERT_GetPubKey2)(void* handle, char* algorithm, char* length, BINSTR* key)
{
    return callOn(handle, [&](Context& context) {
        const Certificate& certificate = context.certificate();
        const std::string name = publicKeyAlgorithmOf(certificate, context.charset());
        const std::string bits = publicKeyLengthOf(certificate, context.charset());
        require(algorithm && length, Code::BadArgument);
        assign(key, certificate.publicKeyDer());
        copyAllCut({{name, algorithmSize, algorithm}, {bits, lengthSize, length}});
    });
}

QGTK_OPERATION(CERT_GetCertPolicy_PolicyID)(void* handle, int size, char* text)
{
    return getText(handle, size, text, policyIdsOf);
}

QGTK_OPERATION(CERT_GetIssuerAltName)(void* handle, int size, char* text)
{
    return getText(handle, size, text, issuerAltNameOf);
}

QGTK_OPERATION(CERT_GetCRLDP_URL)(void* handle, int size, char* text)
{
    return getText(handle, size, text, crlUrlsOf);
}

QGTK_OPERATION(CERT_GetPolicyConstraints)(void* handle, int size, char* text)
{
    return getText(handle, size, text, policyConstraintsOf);
}

QGTK_OPERATION(CERT_GetSubjectName_DERFormat)(void* handle, BINSTR* name)
{
    return callOn(handle, [&](Context& context) { assign(name, context.certificate().subjectDer()); });
}

QGTK_OPERATION(MEDIA_Load)(void* handle, char* path)
{
    return callOn(handle, [&](Context& context) { context.token.load(pathArgument(path)); });
}

QGTK_OPERATION(MEDIA_Unload)(void* handle)
{
    return callOn(handle, [&](Context& context) { context.token.unload(); });
}

QGTK_OPERATION(MEDIA_DISK_ReadFile)(void* handle, char* path, BINSTR* data)
{
    return callOn(handle, [&](Context&) { assign(data, readFile(pathArgument(path))); });
}

QGTK_OPERATION(MEDIA_DISK_WriteFile)(void* handle, char* path, BINSTR* data)
{
    return callOn(handle, [&](Context&) { writeFile(pathArgument(path), viewOf(data)); });
}

QGTK_OPERATION(MEDIA_DISK_ReadCert)(void* handle, char* path, BINSTR* certificate)
{
    return callOn(handle, [&](Context&) { assign(certificate, readCertificateFile(pathArgument(path))); });
}

QGTK_OPERATION(MEDIA_DISK_ReadPriKey)(void* handle, char* path, char* password, BINSTR* key)
{
    return callOn(handle, [&](Context& context) {
        assign(key, readKeyFile(context, pathArgument(path), textArgument(password)));
    });
}

QGTK_OPERATION(MEDIA_DISK_WriteCert)(void* handle, char* path, BINSTR* certificate)
{
    return callOn(handle, [&](Context&) { writeCertificateFile(pathArgument(path), viewOf(certificate)); });
}

QGTK_OPERATION(MEDIA_DISK_WritePriKey)(void* handle, int symAlg, char* path, char* password, BINSTR* key)
{
    return callOn(handle, [&](Context& context) {
        writeKeyFile(context, symAlg, pathArgument(path), textArgument(password), viewOf(key));
    });
}

QGTK_OPERATION(MEDIA_DISK_DeleteCert)(void* handle, char* path)
{
    return callOn(handle, [&](Context&) { deleteFile(pathArgument(path)); });
}

QGTK_OPERATION(MEDIA_DISK_DeletePriKey)(void* handle, char* password, char* path)
{
    return callOn(handle, [&](Context& context) {
        deleteKeyFile(context, pathArgument(path), textArgument(password));
    });
}

QGTK_OPERATION(VID_HashOfIDN_R)
(void* handle, BINSTR* certificate, BINSTR* random, char* idNumber, BINSTR* hash)
{
    return callOn(handle, [&](Context& context) {
        assign(hash, identityHash(context.crypto(), Certificate(viewOf(certificate)), viewOf(random),
                                  textArgument(idNumber)));
    });
}

QGTK_OPERATION(CERT_SetVerifyEnv1)(void* handle, int range, int check, bool useCache, char* ocspUrl)
{
    return callOn(handle, [&](Context& context) {
        using enum StatusSource;
        setVerification(context, wholeChainOf(range), sourceOf(check, {None, Ocsp, Crl, OcspElseCrl}),
                        useCache, ocspUrl);
    });
}

QGTK_OPERATION(CERT_SetVerifyEnv2)(void* handle, char* time, BINSTR* authorityList, BINSTR* list)
{
    return callOn(handle, [&](Context& context) {
        VerifySettings settings = context.verifySettings;
        settings.time = referenceTimeOf(time);
        settings.arl = optionalBytes(authorityList);
        settings.crl = optionalBytes(list);
        for (const Bytes* given : {&settings.arl, &settings.crl})
            if (!given->empty())
                decodeCrl(context.crypto(), *given);
        context.verifySettings = std::move(settings);
    });
}

QGTK_OPERATION(CERT_Verify)
(void* handle, BINSTR* certificate, int certificateType, char* policies, bool sign, BINSTR* signerCertificate,
 BINSTR* signerKey)
{
    return callOn(handle, [&](Context& context) {
        verifyCertificate(
            context, viewOf(certificate),
            verifyRequest(context, certificateType, policies, sign, signerCertificate, signerKey));
    });
}

QGTK_OPERATION(CERT_Verify2)(void* handle, BINSTR* certificate, int certificateType, char* policies, char*)
{
    // The password is for keys on a medium, of which none is at hand: requests are not signed.
    return callOn(handle, [&](Context& context) {
        verifyCertificate(context, viewOf(certificate),
                          verifyRequest(context, certificateType, policies, false, nullptr, nullptr));
    });
}

QGTK_OPERATION(ZRAP_GetDataByURL)(void* handle, int dataType, char* url, BINSTR* data)
{
    return fetchByAddress(handle, dataType, url, data);
}

QGTK_OPERATION(ZRAP_GetCRLByCert)(void* handle, BINSTR* certificate, BINSTR* list)
{
    return fetchListFor(handle, certificate, list);
}

QGTK_OPERATION(UTIL_CompareDN)(void* handle, char* first, char* second)
{
    return callOn(handle, [&](Context&) { compareNames(textArgument(first), textArgument(second)); });
}

QGTK_OPERATION(UTIL_GetCertPath)(void* handle, BINSTR* certificate, BINSTR* path)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(path);
        assign(path, pathBytes(certificatePath(context, viewOf(certificate))));
    });
}

QGTK_OPERATION(UTIL_GetRootCert)(void* handle, BINSTR* certificate, BINSTR* root)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(root);
        const X509Stack path = certificatePath(context, viewOf(certificate));
        assign(root, derOf(sk_X509_value(path.get(), sk_X509_num(path.get()) - 1)));
    });
}

QGTK_OPERATION(UTIL_IsTrustCert)(void* handle, BINSTR* certificate, BINSTR* root, bool* isTrusted)
{
    return callOn(handle, [&](Context& context) {
        store(isTrusted, isOnPath(context, viewOf(certificate), viewOf(root)));
    });
}
