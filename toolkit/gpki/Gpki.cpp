/* The government PKI library's interface: what it has beyond the operations of both. */

#define QGTK_PREFIX GPKI_
#define QGTK_CONFIGURATION "gpkiapi.conf"

#include "toolkit/interface/Interface.h"
#include "toolkit/interface/TextGetters.h"

using namespace qgtk;

namespace {

/** The only medium here; 2 are smart cards. */
void requireDisk(int medium)
{
    constexpr int disk = 1;
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
    return callOn(handle, [&](Context& context) { context.module = loadModule(pathArgument(path)); });
}

QGTK_OPERATION(STORAGE_Unload)(void* handle)
{
    return callOn(handle, [&](Context& context) { context.module.reset(); });
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
