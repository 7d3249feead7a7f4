/* Messages of the main toolkit's interface. */

#define QGTK_PREFIX ZRTK_

#include "toolkit/interface/MessageInterface.h"

using namespace qgtk;

namespace {

/** What a call and CMS_SetOption ask for together. */
int optionsOf(const Context& context, int given)
{
    return given | context.messages.options;
}

/** Callers hand buffers of one size for all three. */
void storeRecipient(const MessageRecipient& recipient, int size, char* issuer, char* serial, char* keyId)
{
    copyAllCut(
        {{recipient.issuer, size, issuer}, {recipient.serial, size, serial}, {recipient.keyId, size, keyId}});
}

/** Throws AlgorithmCodeUnknown unless the number is 0 or that of the context's symmetric key. */
void requireContextCipher(const Context& context, int symAlg)
{
    const std::optional<CipherKey>& key = context.cryptoSettings.cipherKey;
    require(symAlg == 0 || !key || symAlg == key->algorithm, Code::AlgorithmCodeUnknown);
}

/** Verifies a message and gives its first signer. */
void verifyWithSigner(Context& context, const BINSTR* input, BINSTR* content, BINSTR* certificate)
{
    verifyData(context, context.messages.options, input, content);
    giveSigner(context, 0, certificate, nullptr);
}

} // namespace

#include "toolkit/interface/MessageOperations.inc"

QGTK_OPERATION(CMS_SetOption)(void* handle, int option)
{
    return callOn(handle, [&](Context& context) { context.messages.options = checkedOptions(option); });
}

QGTK_OPERATION(CMS_MakeSignedData)
(void* handle, int option, BINSTR* certificate, BINSTR* key, BINSTR* data, char* signTime, BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        signData(context, optionsOf(context, option), {certificate, key}, data, signTime, message);
    });
}

QGTK_OPERATION(CMS_MakeSignedDataWithAddSigner)
(void* handle, int option, BINSTR* certificate, BINSTR* key, BINSTR* message, char* signTime, BINSTR* result)
{
    return callOn(handle, [&](Context& context) {
        signToo(context, optionsOf(context, option), {certificate, key}, message, signTime, result);
    });
}

QGTK_OPERATION(CMS_ProcessSignedData)(void* handle, int option, BINSTR* message, BINSTR* data, int* count)
{
    return callOn(handle, [&](Context& context) {
        verifyData(context, optionsOf(context, option), message, data);
        if (count)
            *count = static_cast<int>(context.messages.signers.size());
    });
}

QGTK_OPERATION(CMS_GetSignerCert)(void* handle, int index, BINSTR* certificate, char* signTime)
{
    return callOn(handle, [&](Context& context) { giveSigner(context, index, certificate, signTime); });
}

QGTK_OPERATION(CMS_MakeTBSData)
(void* handle, int option, BINSTR* certificate, BINSTR* data, char* signTime, BINSTR* bytes)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(bytes);
        const SigningForm form = signingForm(context, optionsOf(context, option), signTime);
        assign(bytes, bytesToSign(context, viewOf(certificate), form, messageBytes(data)));
    });
}

QGTK_OPERATION(CMS_ComposeSignedData)(void* handle, BINSTR* signature, BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(message);
        assign(message, composeMessage(context, viewOf(signature)));
    });
}

QGTK_OPERATION(CMS_MakeSignedData_File)
(void* handle, BINSTR* certificate, BINSTR* key, char* source, char* signTime, char* target)
{
    return callOn(handle, [&](Context& context) {
        signFileArguments(context, context.messages.options, {certificate, key}, source, signTime, target,
                          false);
    });
}

QGTK_OPERATION(CMS_MakeSignedData_WithContent_File)
(void* handle, BINSTR* certificate, BINSTR* key, char* source, char* signTime, char* target)
{
    return callOn(handle, [&](Context& context) {
        signFileArguments(context, context.messages.options, {certificate, key}, source, signTime, target,
                          true);
    });
}

/* Serves messages with and without content: callers have one name for both. */
QGTK_OPERATION(CMS_ProcessSignedData_File)
(void* handle, char* message, char* content, BINSTR* certificate, char* signTime)
{
    return callOn(handle, [&](Context& context) {
        verifyFileArguments(context, context.messages.options, message, content, ContentPlace::Either,
                            certificate, signTime);
    });
}

QGTK_OPERATION(CMS_MakeEnvelopedData)
(void* handle, int option, BINSTR* certificate, BINSTR* data, int symAlg, BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        checkedOptions(option);
        envelopeData(context, certificate, data, symAlg, message);
    });
}

QGTK_OPERATION(CMS_MakeEnvelopedDataWithMultiRecipients)
(void* handle, int option, BINSTR* certificates, BINSTR* data, int symAlg, BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        checkedOptions(option);
        envelopeData(context, certificates, data, symAlg, message);
    });
}

QGTK_OPERATION(CMS_GetEnvDataRecipCnt)(void* handle, BINSTR* message, int* count)
{
    return callOn(handle, [&](Context& context) {
        require(count != nullptr, Code::BadArgument);
        context.messages.recipients = recipientsOf(context, messageBytes(message));
        *count = static_cast<int>(context.messages.recipients.size());
    });
}

QGTK_OPERATION(CMS_GetEnvDataRecipInfo)
(void* handle, int index, int size, char* issuer, char* serial, char* keyId)
{
    return callOn(handle, [&](Context& context) {
        const std::vector<MessageRecipient>& recipients = context.messages.recipients;
        require(index >= 0 && static_cast<std::size_t>(index) < recipients.size(), Code::MessageIndex);
        storeRecipient(recipients[static_cast<std::size_t>(index)], size, issuer, serial, keyId);
    });
}

QGTK_OPERATION(CMS_MakeEnvelopedData_File)
(void* handle, BINSTR* certificate, char* source, int symAlg, char* message, char* encrypted)
{
    return callOn(handle, [&](Context& context) {
        envelopeFiles(context, viewOf(certificate), symAlg, pathArgument(source), pathArgument(message),
                      pathArgument(encrypted));
    });
}

QGTK_OPERATION(CMS_ProcessEnvelopedData_File)
(void* handle, BINSTR* certificate, BINSTR* key, char* message, char* encrypted, char* target)
{
    return callOn(handle, [&](Context& context) {
        openEnvelopeFiles(context, PairArgument{certificate, key}.in(context), pathArgument(message),
                          pathArgument(encrypted), pathArgument(target));
    });
}

QGTK_OPERATION(CMS_MakeEnvelopedData_WithContent_File)
(void* handle, BINSTR* certificate, char* source, int symAlg, char* message)
{
    return callOn(handle, [&](Context& context) {
        envelopeFile(context, viewOf(certificate), symAlg, pathArgument(source), pathArgument(message));
    });
}

QGTK_OPERATION(CMS_ProcessEnvelopedData_WithContent_File)
(void* handle, BINSTR* certificate, BINSTR* key, char* message, char* target)
{
    return callOn(handle, [&](Context& context) {
        openEnvelopeFile(context, PairArgument{certificate, key}.in(context), pathArgument(message),
                         pathArgument(target));
    });
}

QGTK_OPERATION(CMS_MakeSignedAndEnvData)
(void* handle, int option, BINSTR* certificate, BINSTR* key, BINSTR* recipients, BINSTR* data, int symAlg,
 BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        signAndEnvelopeData(context, optionsOf(context, option), {certificate, key}, recipients, data, symAlg,
                            message);
    });
}

QGTK_OPERATION(CMS_ProcessSignedAndEnvData)
(void* handle, int option, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* data,
 BINSTR* signerCertificate)
{
    return callOn(handle, [&](Context& context) {
        openSignedData(context, optionsOf(context, option), {certificate, key}, message, data,
                       signerCertificate);
    });
}

/* With a certificate the content is for its holder; without one it is under the context's symmetric key. */
QGTK_OPERATION(CMS_EncryptData)
(void* handle, int option, BINSTR* certificate, BINSTR* data, int symAlg, BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        checkedOptions(option);
        if (certificate && certificate->pData) {
            envelopeData(context, certificate, data, symAlg, message);
            return;
        }
        requireContextCipher(context, symAlg);
        assign(message, encryptData(context, messageBytes(data)));
    });
}

QGTK_OPERATION(WPKI_SignData)(void* handle, BINSTR* certificate, BINSTR* key, BINSTR* data, BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        signData(context, context.messages.options, {certificate, key}, data, nullptr, message);
    });
}

QGTK_OPERATION(WPKI_VerifyData)(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return callOn(handle, [&](Context& context) { verifyWithSigner(context, message, data, certificate); });
}

/* The sender signs inside the envelope, so that its reader knows who wrote. */
QGTK_OPERATION(WPKI_EncryptData)
(void* handle, BINSTR* recipients, BINSTR* data, int symAlg, BINSTR* certificate, BINSTR* key,
 BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        SigningForm form = signingForm(context, context.messages.options, nullptr);
        form.options &= ~(QG_CMS_DETACHED | QG_CMS_NO_CERTIFICATES);
        const Bytes letter =
            signMessage(context, PairArgument{certificate, key}.in(context), form, messageBytes(data));
        assign(message, envelope(context, viewOf(recipients), symAlg, letter));
    });
}

QGTK_OPERATION(WPKI_DecryptData)
(void* handle, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* data)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(data);
        const SecretBytes letter =
            openEnvelope(context, messageBytes(message), PairArgument{certificate, key}.in(context));
        const CmsHandle opened = decodeMessage(context.crypto(), letter);
        requireKind(opened.get(), NID_pkcs7_signed);
        verifyMessage(context, opened.get(), context.messages.options, nullptr, [](ByteView) {});
        assign(data, contentOf(carriedContent(opened.get())));
    });
}

QGTK_OPERATION(WPKI_VerifyCert)(void* handle, BINSTR* certificate)
{
    return callOn(handle, [&](Context& context) { verifyCertificate(context, viewOf(certificate), {}); });
}

QGTK_OPERATION(UNI_VerifySignData)(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return callOn(handle, [&](Context& context) { verifyWithSigner(context, message, data, certificate); });
}

QGTK_OPERATION(UNI_DecryptEnvData)
(void* handle, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* data)
{
    return callOn(handle, [&](Context& context) { openData(context, {certificate, key}, message, data); });
}
