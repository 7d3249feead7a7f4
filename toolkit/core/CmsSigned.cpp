#include "toolkit/core/CmsSigned.h"

#include <openssl/err.h>
#include <openssl/rsa.h>

#include "quillgate/message_options.h"
#include "toolkit/core/AlgorithmCodes.h"
#include "toolkit/core/CmsAttributes.h"
#include "toolkit/core/CmsSigners.h"

namespace qgtk {

namespace {

/** Chooses PSS where the form asks for it. */
void chooseScheme(CMS_SignerInfo* info, const EVP_MD* digest)
{
    EVP_PKEY_CTX* run = CMS_SignerInfo_get0_pkey_ctx(info);
    check(EVP_PKEY_CTX_set_rsa_padding(run, RSA_PKCS1_PSS_PADDING), Code::KeyUnsuitable);
    check(EVP_PKEY_CTX_set_signature_md(run, digest), Code::KeyUnsuitable);
}

/** Adds a certificate unless it is there. */
void addCertificate(CMS_ContentInfo* message, X509* certificate)
{
    if (CMS_add1_cert(message, certificate) != 1 &&
        ERR_GET_REASON(ERR_peek_last_error()) != CMS_R_CERTIFICATE_ALREADY_PRESENT)
        throw std::bad_alloc();
}

/** Adds a signer who has not signed yet. */
CMS_SignerInfo* addSignerInfo(const Crypto& crypto, CMS_ContentInfo* message, const RequestSigner& signer,
                              const SigningForm& form)
{
    const bool pss = form.rsa == RsaScheme::V2 && EVP_PKEY_get_base_id(signer.key.get()) == EVP_PKEY_RSA;
    const unsigned flags = CMS_PARTIAL | CMS_BINARY | CMS_NOSMIMECAP | CMS_NOCERTS |
                           (pss ? CMS_KEY_PARAM : 0U) |
                           ((form.options & QG_CMS_NO_ATTRIBUTES) != 0 ? CMS_NOATTR : 0U);
    const DigestHandle digest = crypto.digest(form.digest);
    CMS_SignerInfo* info =
        CMS_add1_signer(message, signer.certificate.get(), signer.key.get(), digest.get(), flags);
    require(info != nullptr, Code::KeyUnsuitable);
    if ((form.options & QG_CMS_NO_CERTIFICATES) == 0)
        addCertificate(message, signer.certificate.get());
    if (pss)
        chooseScheme(info, digest.get());
    if ((form.options & QG_CMS_NO_ATTRIBUTES) == 0)
        addSigningTime(info, form.time);
    return info;
}

/** Puts the authorities that the context knows into a message. */
void addAuthorities(Context& context, CMS_ContentInfo* message)
{
    const X509Stack authorities = messageCertificates(context.crypto(), context.caCertificates());
    for (int i = 0; i < sk_X509_num(authorities.get()); ++i)
        addCertificate(message, sk_X509_value(authorities.get(), i));
}

/** The digest of a signed message's content, by the digest's name. */
Bytes contentDigest(const Crypto& crypto, CMS_ContentInfo* message, const char* digest)
{
    if (const ASN1_OCTET_STRING* content = carriedContent(message))
        return crypto.hash(digest, contentOf(content));
    return digestOfSigners(message, crypto.digest(digest).get());
}

} // namespace

SigningForm signingForm(Context& context, int options, const char* signTime)
{
    SigningForm form;
    form.options = checkedOptions(options);
    form.digest = digestOfCode(context.hashAlgorithm);
    form.rsa = context.cryptoSettings.rsa;
    form.time = referenceTimeOf(signTime).value_or(std::time(nullptr));
    return form;
}

CmsHandle startSigned(Context& context, const RequestSigner& signer, const SigningForm& form, bool detached)
{
    const Crypto& crypto = context.crypto();
    const unsigned flags = CMS_PARTIAL | CMS_BINARY | (detached ? CMS_DETACHED : 0U);
    CmsHandle message =
        owned<CmsHandle>(CMS_sign_ex(nullptr, nullptr, nullptr, nullptr, flags, crypto.context(), nullptr));
    addSignerInfo(crypto, message.get(), signer, form);
    if ((form.options & QG_CMS_AUTHORITIES) != 0)
        addAuthorities(context, message.get());
    return message;
}

Bytes signMessage(Context& context, const RequestSigner& signer, const SigningForm& form, ByteView content)
{
    const CmsHandle message = startSigned(context, signer, form, (form.options & QG_CMS_DETACHED) != 0);
    const FilterChain chain(CMS_dataInit(message.get(), nullptr), nullptr, Code::KeyUnsuitable);
    chain.feed(content);
    chain.finish();
    check(CMS_dataFinal(message.get(), chain.get()), Code::KeyUnsuitable);
    return encodeMessage(message.get());
}

Bytes addSigner(Context& context, const RequestSigner& signer, const SigningForm& form, ByteView message)
{
    const Crypto& crypto = context.crypto();
    const CmsHandle decoded = decodeMessage(crypto, message);
    requireKind(decoded.get(), NID_pkcs7_signed);
    if (carriedContent(decoded.get()))
        checkSigners(context, decoded.get(), nullptr, [](ByteView) {});
    SigningForm withAttributes = form;
    withAttributes.options &= ~QG_CMS_NO_ATTRIBUTES;
    const Bytes digest = contentDigest(crypto, decoded.get(), form.digest);
    CMS_SignerInfo* info = addSignerInfo(crypto, decoded.get(), signer, withAttributes);
    addContentAttributes(info, CMS_get0_eContentType(decoded.get()), digest);
    check(CMS_SignerInfo_sign(info), Code::KeyUnsuitable);
    if ((form.options & QG_CMS_AUTHORITIES) != 0)
        addAuthorities(context, decoded.get());
    return encodeMessage(decoded.get());
}

void verifyMessage(Context& context, CMS_ContentInfo* message, int options, BIO* source,
                   const BlockSink& take)
{
    forgetSigners(context);
    checkSigners(context, message, source, take);
    std::vector<MessageSigner> signers = signersOf(message);
    const X509Stack certificates(CMS_get1_certs(message));
    Bytes authorities = otherCertificates(certificates.get(), signers);
    keepSigners(context, options, std::move(signers), std::move(authorities));
}

const MessageSigner& keptSigner(const Context& context, int index)
{
    const std::vector<MessageSigner>& signers = context.messages.signers;
    require(index >= 0 && static_cast<std::size_t>(index) < signers.size(), Code::MessageIndex);
    return signers[static_cast<std::size_t>(index)];
}

} // namespace qgtk
