#include "toolkit/core/CmsCompose.h"

#include "quillgate/message_options.h"
#include "toolkit/core/AlgorithmCodes.h"
#include "toolkit/core/CmsAttributes.h"
#include "toolkit/core/CmsSigners.h"

namespace qgtk {

namespace {

bool has(const PendingSignature& pending, int option)
{
    return (pending.options & option) != 0;
}

/** The pending message with all that is signed, and no signature. */
CmsHandle unsignedMessage(Context& context, const PendingSignature& pending)
{
    const Crypto& crypto = context.crypto();
    // The public key stands for the private one, which is elsewhere: nothing is signed here.
    RequestSigner signer{decodeX509(crypto, pending.certificate), nullptr};
    signer.key.reset(X509_get_pubkey(signer.certificate.get()));
    require(signer.key != nullptr, Code::CertPublicKeyUnknown);
    const SigningForm form{pending.options, digestOfCode(pending.hashAlgorithm), RsaScheme::V15,
                           pending.signTime};
    CmsHandle message = startSigned(context, signer, form, has(pending, QG_CMS_DETACHED));
    if (!has(pending, QG_CMS_NO_ATTRIBUTES))
        addContentAttributes(signerAt(message.get(), 0), CMS_get0_eContentType(message.get()),
                             crypto.hash(form.digest, pending.content));
    return message;
}

/** Puts the content into a message that carries it. */
void setContent(CMS_ContentInfo* message, ByteView content)
{
    auto octets = owned<Handle<ASN1_OCTET_STRING, ASN1_OCTET_STRING_free>>(ASN1_OCTET_STRING_new());
    if (!ASN1_OCTET_STRING_set(octets.get(), content.data(), static_cast<int>(content.size())))
        throw std::bad_alloc();
    ASN1_OCTET_STRING** place = CMS_get0_content(message);
    ASN1_OCTET_STRING_free(*place);
    *place = octets.release();
}

} // namespace

Bytes bytesToSign(Context& context, ByteView certificate, const SigningForm& form, ByteView content)
{
    PendingSignature pending;
    pending.options = form.options;
    pending.hashAlgorithm = context.hashAlgorithm;
    pending.certificate.assign(certificate.begin(), certificate.end());
    pending.content.assign(content.begin(), content.end());
    pending.signTime = form.time;
    const CmsHandle message = unsignedMessage(context, pending);
    Bytes bytes = has(pending, QG_CMS_NO_ATTRIBUTES) ? Bytes(content.begin(), content.end())
                                                     : signedAttributes(signerAt(message.get(), 0));
    context.messages.pending = std::move(pending);
    return bytes;
}

Bytes composeMessage(Context& context, ByteView signature)
{
    std::optional<PendingSignature>& pending = context.messages.pending;
    require(pending.has_value(), Code::NothingPending);
    const CmsHandle message = unsignedMessage(context, *pending);
    if (!ASN1_STRING_set(CMS_SignerInfo_get0_signature(signerAt(message.get(), 0)), signature.data(),
                         static_cast<int>(signature.size())))
        throw std::bad_alloc();
    const bool detached = has(*pending, QG_CMS_DETACHED);
    if (!detached)
        setContent(message.get(), pending->content);
    Bytes encoded = encodeMessage(message.get());
    // What the signature is worth shows when the message is read as anybody reads it.
    const CmsHandle read = decodeMessage(context.crypto(), encoded);
    if (CMS_set1_signers_certs(read.get(), nullptr, 0) == 0)
        CMS_SignerInfo_set1_signer_cert(signerAt(read.get(), 0),
                                        decodeX509(context.crypto(), pending->certificate).get());
    const BioHandle content = sourceOver(pending->content);
    checkSigners(context, read.get(), detached ? content.get() : nullptr, [](ByteView) {});
    pending.reset();
    return encoded;
}

} // namespace qgtk
