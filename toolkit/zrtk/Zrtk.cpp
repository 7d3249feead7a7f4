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
        copyCut("3.4.2.20", versionSize, version);
        copyCut(std::string("Quillgate open toolkit, ") + OpenSSL_version(OPENSSL_VERSION), informationSize,
                information);
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
    const int result = getText(handle, timeSize, from, notBeforeOf);
    return result != 0 ? result : getText(handle, timeSize, to, notAfterOf);
}

QGTK_OPERATION(CERT_GetPubKey)(void* handle, int size, char* algorithm, char* key)
{
    const int result = getText(handle, algorithmSize, algorithm, publicKeyAlgorithmOf);
    return result != 0 ? result : getText(handle, size, key, publicKeyOf);
}

QGTK_OPERATION(CERT_GetPubKey2)(void* handle, char* algorithm, char* length, BINSTR* key)
{
    return callOn(handle, [&](Context& context) {
        const Certificate& certificate = context.certificate();
        copyCut(publicKeyAlgorithmOf(certificate, context.charset()), algorithmSize, algorithm);
        copyCut(publicKeyLengthOf(certificate, context.charset()), lengthSize, length);
        assign(key, certificate.publicKeyDer());
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
    return callOn(handle, [&](Context& context) { context.module = loadModule(pathArgument(path)); });
}

QGTK_OPERATION(MEDIA_Unload)(void* handle)
{
    return callOn(handle, [&](Context& context) { context.module.reset(); });
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
