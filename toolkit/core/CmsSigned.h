#pragma once

#include "toolkit/core/CmsObjects.h"
#include "toolkit/core/Ocsp.h"
#include "toolkit/core/RsaScheme.h"

namespace qgtk {

/** How a message is signed. */
struct SigningForm
{
    int options = 0;              /**< see QG_CMS_DETACHED */
    const char* digest = nullptr; /**< OpenSSL's name */
    RsaScheme rsa = RsaScheme::V15;
    std::time_t time = 0; /**< what the message tells as the instant of signing */
};

/** The context's form, with a signing time, see referenceTimeOf. Throws NotSupported, BadTime. */
SigningForm signingForm(Context& context, int options, const char* signTime);

/** A signed message (SignedData, DER) over the content. Throws KeyUnsuitable. */
Bytes signMessage(Context& context, const RequestSigner& signer, const SigningForm& form, ByteView content);

/**
 * The message with one more signer. A message that carries its content is verified first, so that nobody
 * signs a digest that is not the content's; one without content must have a signer with the same hash
 * (ContentMissing). Throws as verifyMessage.
 */
Bytes addSigner(Context& context, const RequestSigner& signer, const SigningForm& form, ByteView message);

/** A signed message that no content has gone through yet, with its signer; the content is not in it. */
CmsHandle startSigned(Context& context, const RequestSigner& signer, const SigningForm& form, bool detached);

/**
 * Verifies a signed message by all of its signers; the content is what the message carries, else the
 * source's. The content is given block by block before the verdict. Keeps the signers in the context. Throws
 * MessageKind, SignerCertMissing, ContentMissing, SignatureWrong, MessageAlgorithm, and as verifyCertificate
 * when the options say so; nothing is kept then.
 */
void verifyMessage(Context& context, CMS_ContentInfo* message, int options, BIO* source,
                   const BlockSink& take);

/** A signer of the last verified message. Throws MessageIndex. */
const MessageSigner& keptSigner(const Context& context, int index);

} // namespace qgtk
