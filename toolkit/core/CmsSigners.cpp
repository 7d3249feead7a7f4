#include "toolkit/core/CmsSigners.h"

#include <algorithm>

#include "quillgate/message_options.h"
#include "toolkit/core/CmsAttributes.h"
#include "toolkit/core/PathFailure.h"
#include "toolkit/core/Verification.h"

namespace qgtk {

namespace {

X509* certificateOf(CMS_SignerInfo* info)
{
    X509* certificate = nullptr;
    CMS_SignerInfo_get0_algs(info, nullptr, &certificate, nullptr, nullptr);
    return certificate;
}

template <typename Visit>
void forEachSigner(CMS_ContentInfo* message, Visit&& visit)
{
    STACK_OF(CMS_SignerInfo)* signers = CMS_get0_SignerInfos(message);
    for (int i = 0; i < sk_CMS_SignerInfo_num(signers); ++i)
        visit(sk_CMS_SignerInfo_value(signers, i));
}

void findCertificates(Context& context, CMS_ContentInfo* message)
{
    const int count = sk_CMS_SignerInfo_num(CMS_get0_SignerInfos(message));
    require(count > 0, Code::MessageKind);
    if (CMS_set1_signers_certs(message, nullptr, 0) < count)
        CMS_set1_signers_certs(message, knownCertificates(context).get(), 0);
    forEachSigner(message, [](CMS_SignerInfo* info) {
        require(certificateOf(info) != nullptr, Code::SignerCertMissing);
    });
}

void checkSigner(Context& context, CMS_ContentInfo* message, CMS_SignerInfo* info, BIO* chain)
{
    const bool right = (CMS_signed_get_attr_count(info) <= 0 || CMS_SignerInfo_verify(info) == 1) &&
                       CMS_SignerInfo_verify_content(info, chain) == 1;
    if (!right)
        throw failureOf(Code::SignatureWrong, certificateOf(info), context.charset());
    requireContentType(info, CMS_get0_eContentType(message));
}

MessageSigner describe(CMS_SignerInfo* info)
{
    MessageSigner signer;
    signer.certificate = derOf(certificateOf(info));
    signer.signTime = signTimeOf(info);
    const ByteView signature = contentOf(CMS_SignerInfo_get0_signature(info));
    signer.signature.assign(signature.begin(), signature.end());
    signer.timeStamp = timeStampOf(info);
    return signer;
}

/** The context's list of authorities, longer for one operation. */
class MoreAuthorities
{
public:
    MoreAuthorities(Context& context, ByteView more) : m_context(context)
    {
        Bytes longer(context.caCertificates().begin(), context.caCertificates().end());
        longer.insert(longer.end(), more.begin(), more.end());
        m_list = context.exchangeCaCertificates(std::move(longer));
    }
    ~MoreAuthorities() { m_context.exchangeCaCertificates(std::move(m_list)); }
    MoreAuthorities(const MoreAuthorities&) = delete;
    MoreAuthorities& operator=(const MoreAuthorities&) = delete;

private:
    Context& m_context;
    Bytes m_list;
};

/** Verifies the certificate of each signer, with the authorities that the message brings. */
void verifyCertificates(Context& context, const std::vector<MessageSigner>& signers, ByteView authorities)
{
    const MoreAuthorities more(context, authorities);
    VerifyRequest request;
    request.use = CertificateUse::Signature;
    for (const MessageSigner& signer : signers)
        verifyCertificate(context, signer.certificate, request);
}

} // namespace

X509Stack knownCertificates(Context& context)
{
    X509Stack known = messageCertificates(context.crypto(), context.caCertificates());
    if (context.hasCertificate())
        push(known, decodeX509(context.crypto(), context.certificate().der()).get());
    return known;
}

void checkSigners(Context& context, CMS_ContentInfo* message, BIO* source, const BlockSink& take)
{
    requireKind(message, NID_pkcs7_signed);
    require(source || carriedContent(message), Code::ContentMissing);
    findCertificates(context, message);
    const FilterChain chain(CMS_dataInit(message, source), source, Code::MessageAlgorithm);
    chain.drain(take);
    forEachSigner(message, [&](CMS_SignerInfo* info) { checkSigner(context, message, info, chain.get()); });
}

std::vector<MessageSigner> signersOf(CMS_ContentInfo* message)
{
    std::vector<MessageSigner> signers;
    forEachSigner(message, [&](CMS_SignerInfo* info) { signers.push_back(describe(info)); });
    return signers;
}

Bytes otherCertificates(STACK_OF(X509) * certificates, const std::vector<MessageSigner>& signers)
{
    Bytes list;
    for (int i = 0; i < sk_X509_num(certificates); ++i) {
        const Bytes der = derOf(sk_X509_value(certificates, i));
        if (std::ranges::find(signers, der, &MessageSigner::certificate) == signers.end())
            list.insert(list.end(), der.begin(), der.end());
    }
    return list;
}

void forgetSigners(Context& context)
{
    context.messages.signers.clear();
    context.messages.authorities.clear();
}

void keepSigners(Context& context, int options, std::vector<MessageSigner> signers, Bytes authorities)
{
    if ((options & QG_CMS_VERIFY_SIGNER) != 0)
        verifyCertificates(context, signers, authorities);
    context.messages.signers = std::move(signers);
    context.messages.authorities = std::move(authorities);
}

Bytes digestOfSigners(CMS_ContentInfo* message, const EVP_MD* digest)
{
    constexpr int onlyOne = -3;
    Bytes found;
    forEachSigner(message, [&](CMS_SignerInfo* info) {
        X509_ALGOR* algorithm = nullptr;
        CMS_SignerInfo_get0_algs(info, nullptr, nullptr, &algorithm, nullptr);
        const auto* told = static_cast<const ASN1_OCTET_STRING*>(CMS_signed_get0_data_by_OBJ(
            info, OBJ_nid2obj(NID_pkcs9_messageDigest), onlyOne, V_ASN1_OCTET_STRING));
        if (told && OBJ_obj2nid(algorithm->algorithm) == EVP_MD_get_type(digest))
            found.assign(contentOf(told).begin(), contentOf(told).end());
    });
    require(!found.empty(), Code::ContentMissing);
    return found;
}

CMS_SignerInfo* signerAt(CMS_ContentInfo* message, int index)
{
    STACK_OF(CMS_SignerInfo)* signers = CMS_get0_SignerInfos(message);
    require(index >= 0 && index < sk_CMS_SignerInfo_num(signers), Code::MessageIndex);
    return sk_CMS_SignerInfo_value(signers, index);
}

} // namespace qgtk
