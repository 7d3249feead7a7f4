#include "toolkit/core/CmsSignedEnveloped.h"

#include <openssl/pkcs7.h>

#include "quillgate/message_options.h"
#include "toolkit/core/CmsAttributes.h"
#include "toolkit/core/CmsSigners.h"
#include "toolkit/core/ErrorQueueKeeper.h"
#include "toolkit/core/PathFailure.h"

namespace qgtk {

namespace {

using Pkcs7Handle = Handle<PKCS7, PKCS7_free>;

void addSignature(const Crypto& crypto, PKCS7* message, const RequestSigner& signer, const SigningForm& form)
{
    const DigestHandle digest = crypto.digest(form.digest);
    PKCS7_SIGNER_INFO* info =
        PKCS7_add_signature(message, signer.certificate.get(), signer.key.get(), digest.get());
    require(info != nullptr, Code::KeyUnsuitable);
    if ((form.options & QG_CMS_NO_CERTIFICATES) == 0)
        check(PKCS7_add_certificate(message, signer.certificate.get()), Code::Internal);
    if ((form.options & QG_CMS_NO_ATTRIBUTES) != 0)
        return;
    auto time = owned<StringHandle>(ASN1_TIME_set(nullptr, form.time));
    const bool added = PKCS7_add_attrib_content_type(info, nullptr) == 1 &&
                       PKCS7_add0_attrib_signing_time(info, time.get()) == 1;
    if (!added)
        throw std::bad_alloc();
    (void)time.release();
}

void addRecipients(const Crypto& crypto, PKCS7* message, ByteView list)
{
    const X509Stack certificates = messageCertificates(crypto, list);
    require(sk_X509_num(certificates.get()) > 0, Code::BadArgument);
    for (int i = 0; i < sk_X509_num(certificates.get()); ++i) {
        X509* certificate = sk_X509_value(certificates.get(), i);
        require(keyKindOf(certificate) == EVP_PKEY_RSA, Code::KeyUnsuitable);
        require(PKCS7_add_recipient(message, certificate) != nullptr, Code::KeyUnsuitable);
    }
}

void addAuthorities(Context& context, PKCS7* message)
{
    const X509Stack authorities = messageCertificates(context.crypto(), context.caCertificates());
    for (int i = 0; i < sk_X509_num(authorities.get()); ++i)
        check(PKCS7_add_certificate(message, sk_X509_value(authorities.get(), i)), Code::Internal);
}

Pkcs7Handle decode(const Crypto& crypto, ByteView message)
{
    Pkcs7Handle decoded =
        decodeWhole<Pkcs7Handle>(crypto, message, PKCS7_new_ex, d2i_PKCS7, Code::MessageDamaged);
    require(PKCS7_type_is_signedAndEnveloped(decoded.get()) && decoded->d.signed_and_enveloped,
            Code::MessageKind);
    return decoded;
}

/** Whether the message names the certificate among those whom it is for. */
bool isFor(const PKCS7* message, X509* certificate)
{
    STACK_OF(PKCS7_RECIP_INFO)* infos = message->d.signed_and_enveloped->recipientinfo;
    for (int i = 0; i < sk_PKCS7_RECIP_INFO_num(infos); ++i) {
        const PKCS7_ISSUER_AND_SERIAL* named = sk_PKCS7_RECIP_INFO_value(infos, i)->issuer_and_serial;
        if (X509_NAME_cmp(named->issuer, X509_get_issuer_name(certificate)) == 0 &&
            ASN1_INTEGER_cmp(named->serial, X509_get0_serialNumber(certificate)) == 0)
            return true;
    }
    return false;
}

MessageSigner describe(PKCS7_SIGNER_INFO* info, X509* certificate)
{
    MessageSigner signer;
    signer.certificate = derOf(certificate);
    const ASN1_TYPE* time = PKCS7_get_signed_attribute(info, NID_pkcs9_signingTime);
    signer.signTime = timeOf(time);
    const ByteView signature = contentOf(info->enc_digest);
    signer.signature.assign(signature.begin(), signature.end());
    return signer;
}

/** The certificate that a signer is named by: one of the message's, else of the context's. */
X509Handle signerCertificate(Context& context, const PKCS7* message, const PKCS7_SIGNER_INFO* info)
{
    const PKCS7_ISSUER_AND_SERIAL* named = info->issuer_and_serial;
    const X509Stack known = knownCertificates(context);
    for (STACK_OF(X509) * stack : {message->d.signed_and_enveloped->cert, known.get()})
        if (X509* found = X509_find_by_issuer_and_serial(stack, named->issuer, named->serial))
            return share(found);
    throw Failure(Code::SignerCertMissing);
}

std::vector<MessageSigner> verifiedSigners(Context& context, PKCS7* message, BIO* chain)
{
    STACK_OF(PKCS7_SIGNER_INFO)* infos = PKCS7_get_signer_info(message);
    require(sk_PKCS7_SIGNER_INFO_num(infos) > 0, Code::MessageKind);
    std::vector<MessageSigner> signers;
    for (int i = 0; i < sk_PKCS7_SIGNER_INFO_num(infos); ++i) {
        PKCS7_SIGNER_INFO* info = sk_PKCS7_SIGNER_INFO_value(infos, i);
        const X509Handle certificate = signerCertificate(context, message, info);
        if (PKCS7_signatureVerify(chain, message, info, certificate.get()) != 1)
            throw failureOf(Code::SignatureWrong, certificate.get(), context.charset());
        signers.push_back(describe(info, certificate.get()));
    }
    return signers;
}

} // namespace

Bytes signAndEnvelope(Context& context, const RequestSigner& signer, const SigningForm& form,
                      ByteView recipients, int cipher, ByteView content)
{
    require((form.options & QG_CMS_DETACHED) == 0, Code::NotSupported);
    const Crypto& crypto = context.crypto();
    const CipherHandle contentsCipher = contentCipher(crypto, cipher);
    const Pkcs7Handle message = owned<Pkcs7Handle>(PKCS7_new_ex(crypto.context(), nullptr));
    check(PKCS7_set_type(message.get(), NID_pkcs7_signedAndEnveloped), Code::Internal);
    check(PKCS7_set_cipher(message.get(), contentsCipher.get()), Code::CryptoUnavailable);
    addSignature(crypto, message.get(), signer, form);
    addRecipients(crypto, message.get(), recipients);
    if ((form.options & QG_CMS_AUTHORITIES) != 0)
        addAuthorities(context, message.get());
    const FilterChain chain(PKCS7_dataInit(message.get(), nullptr), nullptr, Code::KeyUnsuitable);
    chain.feed(content);
    chain.finish();
    check(PKCS7_dataFinal(message.get(), chain.get()), Code::KeyUnsuitable);
    return encodeDer<Bytes>(i2d_PKCS7, message.get());
}

SecretBytes openSignedEnvelope(Context& context, ByteView message, int options,
                               const RequestSigner& recipient)
{
    forgetSigners(context);
    const ErrorQueueKeeper errors;
    const Pkcs7Handle decoded = decode(context.crypto(), message);
    require(isFor(decoded.get(), recipient.certificate.get()), Code::NotRecipient);
    const FilterChain chain(
        PKCS7_dataDecode(decoded.get(), recipient.key.get(), nullptr, recipient.certificate.get()), nullptr,
        Code::NotDecryptable);
    SecretBytes content;
    chain.drain([&](ByteView block) { content.insert(content.end(), block.begin(), block.end()); });
    requireDecrypted(chain);
    std::vector<MessageSigner> signers = verifiedSigners(context, decoded.get(), chain.get());
    Bytes authorities = otherCertificates(decoded->d.signed_and_enveloped->cert, signers);
    keepSigners(context, options, std::move(signers), std::move(authorities));
    return content;
}

} // namespace qgtk
