#include "toolkit/core/TokenMessages.h"

#include "toolkit/core/CmsEnveloped.h"
#include "toolkit/core/CmsSignedEnveloped.h"
#include "toolkit/core/TokenBackedKey.h"
#include "toolkit/core/TokenPairs.h"

namespace qgtk {

namespace {

/** Runs an operation with certificate and key of a pair on the token. */
template <typename Operation>
auto withPair(Context& context, ByteView id, Operation operation)
{
    const Crypto& crypto = context.crypto();
    const TokenSession& session = context.token.session();
    const TokenBackedKey key(crypto, session, id);
    const SecretBytes certificate = readCertificate(session, id);
    return key.run([&] {
        const RequestSigner pair{decodeX509(crypto, certificate), key.key()};
        requirePair(keyOfCertificate(crypto, Certificate(certificate)), pair.key);
        return operation(pair);
    });
}

} // namespace

Bytes signMessageOnToken(Context& context, ByteView id, const SigningForm& form, ByteView content)
{
    return withPair(context, id,
                    [&](const RequestSigner& pair) { return signMessage(context, pair, form, content); });
}

SecretBytes openEnvelopeOnToken(Context& context, ByteView id, ByteView message)
{
    return withPair(context, id,
                    [&](const RequestSigner& pair) { return openEnvelope(context, message, pair); });
}

Bytes signAndEnvelopeOnToken(Context& context, ByteView id, const SigningForm& form, ByteView recipients,
                             int cipher, ByteView content)
{
    return withPair(context, id, [&](const RequestSigner& pair) {
        return signAndEnvelope(context, pair, form, recipients, cipher, content);
    });
}

SecretBytes openSignedEnvelopeOnToken(Context& context, ByteView id, ByteView message, int options)
{
    return withPair(context, id, [&](const RequestSigner& pair) {
        return openSignedEnvelope(context, message, options, pair);
    });
}

} // namespace qgtk
