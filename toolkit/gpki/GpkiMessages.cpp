/* Messages of the government PKI library's interface. Their options are those of API_SetOption. */

#define QGTK_PREFIX GPKI_

#include "toolkit/core/Challenge.h"
#include "toolkit/interface/MessageInterface.h"

using namespace qgtk;

namespace {

/** Verifies a message and gives its first signer. */
int verifyWithSigner(void* handle, const BINSTR* message, BINSTR* data, BINSTR* certificate,
                     char* signTime) noexcept
{
    return callOn(handle, [&](Context& context) {
        verifyData(context, context.option, message, data);
        giveSigner(context, 0, certificate, signTime);
    });
}

int signWith(void* handle, const PairArgument& pair, const BINSTR* data, const char* signTime,
             BINSTR* message) noexcept
{
    return callOn(
        handle, [&](Context& context) { signData(context, context.option, pair, data, signTime, message); });
}

int envelopeFor(void* handle, const BINSTR* certificates, const BINSTR* data, int symAlg,
                BINSTR* message) noexcept
{
    return callOn(handle,
                  [&](Context& context) { envelopeData(context, certificates, data, symAlg, message); });
}

} // namespace

#include "toolkit/interface/MessageOperations.inc"

QGTK_OPERATION(CMS_MakeSignedData)
(void* handle, BINSTR* certificate, BINSTR* key, BINSTR* data, char* signTime, BINSTR* message)
{
    return signWith(handle, {certificate, key}, data, signTime, message);
}

QGTK_OPERATION(CMS_MakeSignedDataWithAddSigner)
(void* handle, BINSTR* certificate, BINSTR* key, BINSTR* message, char* signTime, BINSTR* result)
{
    return callOn(handle, [&](Context& context) {
        signToo(context, context.option, {certificate, key}, message, signTime, result);
    });
}

QGTK_OPERATION(CMS_ProcessSignedData)
(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate, char* signTime)
{
    return verifyWithSigner(handle, message, data, certificate, signTime);
}

QGTK_OPERATION(CMS_ProcessSignedData2)(void* handle, BINSTR* message, BINSTR* data, int* count)
{
    return callOn(handle, [&](Context& context) {
        verifyData(context, context.option, message, data);
        if (count)
            *count = static_cast<int>(context.messages.signers.size());
    });
}

QGTK_OPERATION(CMS_GetSigner)(void* handle, int index, BINSTR* certificate, char* signTime)
{
    return callOn(handle, [&](Context& context) { giveSigner(context, index, certificate, signTime); });
}

QGTK_OPERATION(CMS_GetSignerCaPubs)(void* handle, BINSTR* certificates)
{
    return callOn(handle, [&](Context& context) {
        keptSigner(context, 0);
        assign(certificates, context.messages.authorities);
    });
}

QGTK_OPERATION(CMS_GetTBTData)(void* handle, int index, BINSTR* data)
{
    return callOn(handle, [&](Context& context) { assign(data, keptSigner(context, index).signature); });
}

QGTK_OPERATION(CMS_GetTimeStampToken)(void* handle, int index, BINSTR* token)
{
    return callOn(handle, [&](Context& context) {
        const Bytes& found = keptSigner(context, index).timeStamp;
        require(!found.empty(), Code::TokenMissing);
        assign(token, found);
    });
}

QGTK_OPERATION(CMS_SetTimeStampToken)
(void* handle, BINSTR* message, int index, BINSTR* token, BINSTR* result)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(result);
        assign(result, withTimeStamp(context.crypto(), messageBytes(message), index, viewOf(token)));
    });
}

QGTK_OPERATION(CMS_MakeSignedData_NoContent_File)
(void* handle, BINSTR* certificate, BINSTR* key, char* source, char* signTime, char* target)
{
    return callOn(handle, [&](Context& context) {
        signFileArguments(context, context.option, {certificate, key}, source, signTime, target, false);
    });
}

QGTK_OPERATION(CMS_MakeSignedData_File)
(void* handle, BINSTR* certificate, BINSTR* key, char* source, char* signTime, char* target)
{
    return callOn(handle, [&](Context& context) {
        signFileArguments(context, context.option, {certificate, key}, source, signTime, target, true);
    });
}

QGTK_OPERATION(CMS_ProcessSignedData_NoContent_File)
(void* handle, char* message, char* content, BINSTR* certificate, char* signTime)
{
    return callOn(handle, [&](Context& context) {
        verifyFileArguments(context, context.option, message, content, ContentPlace::File, certificate,
                            signTime);
    });
}

QGTK_OPERATION(CMS_ProcessSignedData_File)
(void* handle, char* message, char* content, BINSTR* certificate, char* signTime)
{
    return callOn(handle, [&](Context& context) {
        verifyFileArguments(context, context.option, message, content, ContentPlace::Message, certificate,
                            signTime);
    });
}

QGTK_OPERATION(CMS_MakeEnvelopedData)
(void* handle, BINSTR* certificate, BINSTR* data, int symAlg, BINSTR* message)
{
    return envelopeFor(handle, certificate, data, symAlg, message);
}

QGTK_OPERATION(CMS_MakeEnvelopedDataWithMultiRecipients)
(void* handle, BINSTR* certificates, BINSTR* data, int symAlg, BINSTR* message)
{
    return envelopeFor(handle, certificates, data, symAlg, message);
}

QGTK_OPERATION(CMS_MakeEnvelopedData_File)
(void* handle, BINSTR* certificate, char* source, int symAlg, char* message)
{
    return callOn(handle, [&](Context& context) {
        envelopeFile(context, viewOf(certificate), symAlg, pathArgument(source), pathArgument(message));
    });
}

QGTK_OPERATION(CMS_MakeEnvelopedData_NoContent_File)
(void* handle, BINSTR* certificate, char* source, int symAlg, char* message, char* encrypted)
{
    return callOn(handle, [&](Context& context) {
        envelopeFiles(context, viewOf(certificate), symAlg, pathArgument(source), pathArgument(message),
                      pathArgument(encrypted));
    });
}

QGTK_OPERATION(CMS_ProcessEnvelopedData_NoContent_File)
(void* handle, BINSTR* certificate, BINSTR* key, char* message, char* encrypted, char* target)
{
    return callOn(handle, [&](Context& context) {
        openEnvelopeFiles(context, PairArgument{certificate, key}.in(context), pathArgument(message),
                          pathArgument(encrypted), pathArgument(target));
    });
}

QGTK_OPERATION(CMS_ProcessEnvelopedData_File)
(void* handle, BINSTR* certificate, BINSTR* key, char* message, char* target)
{
    return callOn(handle, [&](Context& context) {
        openEnvelopeFile(context, PairArgument{certificate, key}.in(context), pathArgument(message),
                         pathArgument(target));
    });
}

QGTK_OPERATION(CMS_MakeSignedAndEnvData)
(void* handle, BINSTR* certificate, BINSTR* key, BINSTR* recipients, BINSTR* data, int symAlg,
 BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        signAndEnvelopeData(context, context.option, {certificate, key}, recipients, data, symAlg, message);
    });
}

QGTK_OPERATION(CMS_ProcessSignedAndEnvData)
(void* handle, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* data, BINSTR* signerCertificate)
{
    return callOn(handle, [&](Context& context) {
        openSignedData(context, context.option, {certificate, key}, message, data, signerCertificate);
    });
}

QGTK_OPERATION(CMS_MakeEncryptedData)(void* handle, BINSTR* data, BINSTR* message)
{
    return callOn(handle,
                  [&](Context& context) { assign(message, encryptData(context, messageBytes(data))); });
}

QGTK_OPERATION(WCMS_MakeSignedContent)
(void* handle, BINSTR* certificate, BINSTR* key, BINSTR* data, char* signTime, BINSTR* message)
{
    return signWith(handle, {certificate, key}, data, signTime, message);
}

QGTK_OPERATION(WCMS_ProcessSignedContent)
(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate, char* signTime)
{
    return verifyWithSigner(handle, message, data, certificate, signTime);
}

QGTK_OPERATION(WCMS_MakeWapEnvelopedData)
(void* handle, BINSTR* recipients, BINSTR* data, int symAlg, BINSTR* message)
{
    return envelopeFor(handle, recipients, data, symAlg, message);
}

QGTK_OPERATION(WCMS_ProcessWapEnvelopedData)
(void* handle, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* data)
{
    return callOn(handle, [&](Context& context) { openData(context, {certificate, key}, message, data); });
}

QGTK_OPERATION(SIGEA_MakeChallenge)(void* handle, BINSTR* challenge)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(challenge);
        assign(challenge, makeChallenge(context));
    });
}

QGTK_OPERATION(SIGEA_MakeResponse)
(void* handle, BINSTR* challenge, BINSTR* certificate, BINSTR* key, BINSTR* response)
{
    return callOn(handle, [&](Context& context) {
        assign(response,
               answerChallenge(context, PairArgument{certificate, key}.in(context), viewOf(challenge)));
    });
}

QGTK_OPERATION(SIGEA_VerifyResponse)
(void* handle, BINSTR* response, BINSTR* challenge, BINSTR* certificate)
{
    return callOn(handle, [&](Context& context) {
        checkResponse(context, checkedOptions(context.option), messageBytes(response), viewOf(challenge),
                      viewOf(certificate));
    });
}
