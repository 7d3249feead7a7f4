/* The main toolkit's interface: PKCS#11 tokens. */

#define QGTK_PREFIX ZRTK_PKCS11_

#include "toolkit/core/TokenCrypto.h"
#include "toolkit/interface/CryptoInterface.h"
#include "toolkit/interface/TokenInterface.h"

using namespace qgtk;

#include "toolkit/interface/TokenOperations.inc"

namespace {

/** What a token is called that its caller gives no name. */
constexpr const char* defaultLabel = "Quillgate";

/** The first token that has been initialised, or the first that has not. Throws NoToken. */
CK_SLOT_ID firstToken(const TokenModule& module, bool initialised)
{
    for (const CK_SLOT_ID slot : module.slots())
        if (((module.tokenInfo(slot).flags & CKF_TOKEN_INITIALIZED) != 0) == initialised)
            return slot;
    throw Failure(Code::NoToken);
}

/** The slot of a token by its place among the slots that hold one. Throws NoSlot. */
CK_SLOT_ID slotOfToken(const TokenModule& module, int index)
{
    const std::vector<CK_SLOT_ID> slots = module.slots();
    require(index >= 0 && static_cast<std::size_t>(index) < slots.size(), Code::NoSlot);
    return slots[static_cast<std::size_t>(index)];
}

/** Opens the session and logs in, or leaves no session. */
void openLoggedIn(Context& context, CK_SLOT_ID slot, std::string_view pin)
{
    TokenSession& session = context.token.open(context.configuration(), slot);
    try {
        session.logIn(context.crypto(), pin);
    } catch (...) {
        context.token.close();
        throw;
    }
}

/** The paths that a caller gives in one text. Throws BadArgument when there is none. */
std::vector<std::string> pathsIn(const char* list)
{
    constexpr char separator = ';';
    std::string_view rest = textArgument(list);
    std::vector<std::string> paths;
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find(separator), rest.size());
        if (length > 0)
            paths.emplace_back(rest.substr(0, length));
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    require(!paths.empty(), Code::BadArgument);
    return paths;
}

/** What a caller's number of a kind of pair means. Throws BadArgument. */
PairPurpose purposeOf(int keyType)
{
    require(keyType == QG_TOKEN_SIGNING || keyType == QG_TOKEN_MANAGEMENT, Code::BadArgument);
    return keyType == QG_TOKEN_SIGNING ? PairPurpose::Signing : PairPurpose::Management;
}

} // namespace

QGTK_OPERATION(InitToken)(void* handle, char* officerPin, char* userPin)
{
    return callOn(handle, [&](Context& context) {
        TokenModule& module = tokenModule(context);
        // One that holds something is not erased unasked.
        module.initialiseToken(firstToken(module, false), pinArgument(officerPin), pinArgument(userPin),
                               defaultLabel);
    });
}

QGTK_OPERATION(InitTokenWithSlotID)
(void* handle, unsigned long slot, char* officerPin, char* userPin, char* label)
{
    return callOn(handle, [&](Context& context) {
        require(label != nullptr, Code::BadArgument);
        tokenModule(context).initialiseToken(slot, pinArgument(officerPin), pinArgument(userPin), label);
    });
}

QGTK_OPERATION(OpenSession)(void* handle, char* pin)
{
    return callOn(handle, [&](Context& context) {
        openLoggedIn(context, firstToken(tokenModule(context), true), pinArgument(pin));
    });
}

QGTK_OPERATION(OpenSessionWithSlotID)(void* handle, unsigned long slot, char* pin, int /*tokenName*/)
{
    return callOn(handle, [&](Context& context) {
        if (pin)
            openLoggedIn(context, slot, pin);
        else
            context.token.open(context.configuration(), slot);
    });
}

QGTK_OPERATION(OpenSessionWithTokenName)(void* handle, char* pin, int tokenName)
{
    return callOn(handle, [&](Context& context) {
        openLoggedIn(context, slotOfToken(tokenModule(context), tokenName), pinArgument(pin));
    });
}

QGTK_OPERATION(GenKeyPair)(void* handle, int algorithm, int keyType, BINSTR* id)
{
    return callOn(handle, [&](Context& context) {
        generatePair(tokenSession(context), algorithm, purposeOf(keyType), viewOf(id));
    });
}

QGTK_OPERATION(Sign)(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return callOn(handle, [&](Context& context) {
        assign(signature, signOnToken(context.crypto(), tokenSession(context), viewOf(id),
                                      signatureForm(context, QG_HASH_CONTEXT), viewOf(data)));
    });
}

QGTK_OPERATION(Verify)(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return callOn(handle, [&](Context& context) {
        verifyOnToken(context.crypto(), tokenSession(context), viewOf(id),
                      signatureForm(context, QG_HASH_CONTEXT), viewOf(data), viewOf(signature));
    });
}

QGTK_OPERATION(Encrypt)(void* handle, BINSTR* id, BINSTR* plain, BINSTR* cipherText)
{
    return callOn(handle, [&](Context& context) {
        assign(cipherText,
               encryptOnToken(tokenSession(context), viewOf(id), encryptionForm(context), viewOf(plain)));
    });
}

QGTK_OPERATION(Decrypt)(void* handle, BINSTR* id, BINSTR* cipherText, BINSTR* plain)
{
    return callOn(handle, [&](Context& context) {
        assign(plain, decryptOnToken(tokenSession(context), viewOf(id), encryptionForm(context),
                                     viewOf(cipherText)));
    });
}

QGTK_OPERATION(SignData)(void* handle, BINSTR* id, BINSTR* data, BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        signDataOnToken(context, context.messages.options, id, data, message);
    });
}

QGTK_OPERATION(SignData_NoContent)(void* handle, BINSTR* id, BINSTR* data, BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        signDataOnToken(context, context.messages.options | QG_CMS_DETACHED, id, data, message);
    });
}

QGTK_OPERATION(DecryptData)(void* handle, BINSTR* id, BINSTR* message, BINSTR* data)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(data);
        assign(data, openEnvelopeOnToken(context, viewOf(id), messageBytes(message)));
    });
}

/* Callers name no cipher. */
QGTK_OPERATION(SignAndEnvData)
(void* handle, BINSTR* id, BINSTR* recipients, BINSTR* data, BINSTR* message)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(message);
        const SigningForm form = signingForm(context, context.messages.options, nullptr);
        assign(message, signAndEnvelopeOnToken(context, viewOf(id), form, viewOf(recipients),
                                               QG_CIPHER_AES256, messageBytes(data)));
    });
}

QGTK_OPERATION(VerifyAndDecData)
(void* handle, BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signerCertificate)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(data);
        storeSignedContent(context,
                           openSignedEnvelopeOnToken(context, viewOf(id), messageBytes(message),
                                                     checkedOptions(context.messages.options)),
                           data, signerCertificate);
    });
}

QGTK_OPERATION(VerifySignatureValue)
(void* handle, char* paths, BINSTR* signerCertificate, BINSTR* signature)
{
    return callOn(handle, [&](Context& context) {
        const KeyHandle key = keyOfCertificate(context.crypto(), Certificate(viewOf(signerCertificate)));
        verifyData(context.crypto(), key, signatureForm(context, QG_HASH_CONTEXT), pathsIn(paths),
                   viewOf(signature));
    });
}
