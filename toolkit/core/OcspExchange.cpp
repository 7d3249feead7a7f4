#include "toolkit/core/OcspExchange.h"

#include "toolkit/core/CertificateList.h"
#include "toolkit/core/CertificatePath.h"
#include "toolkit/core/Verification.h"

namespace qgtk {

namespace {

OcspRequestHandle decodeRequest(ByteView der)
{
    auto request = decodeDer<OcspRequestHandle>(d2i_OCSP_REQUEST, der);
    require(request && OCSP_request_onereq_count(request.get()) > 0, Code::OcspRequestDamaged);
    return request;
}

OCSP_CERTID* askedAt(OCSP_REQUEST* request, int index)
{
    return OCSP_onereq_get0_id(OCSP_request_onereq_get0(request, index));
}

/** Whether a certificate is the issuer that an identifier means, by the hash that the identifier has. */
bool isIssuerOf(const Crypto& crypto, OCSP_CERTID* id, X509* issuer)
{
    ASN1_OBJECT* hash = nullptr;
    OCSP_id_get0_info(nullptr, &hash, nullptr, nullptr, id);
    const DigestHandle digest(EVP_MD_fetch(crypto.context(), OBJ_nid2sn(OBJ_obj2nid(hash)), nullptr));
    if (!digest)
        return false;
    const OcspCertIdHandle other(OCSP_cert_to_id(digest.get(), nullptr, issuer));
    return other && OCSP_id_issuer_cmp(id, other.get()) == 0;
}

/** DER of the issuer of what a request asks first. */
Bytes issuerOfRequest(Context& context, OCSP_REQUEST* request)
{
    const X509Stack known(X509_STORE_get1_all_certs(context.trusted()));
    for (const Bytes& der : context.ocspIssuers)
        push(known, decodeX509(context.crypto(), der).get());
    for (const ByteView der : splitCertificateList(context.caCertificates()))
        push(known, decodeX509(context.crypto(), der).get());
    OCSP_CERTID* id = askedAt(request, 0);
    for (int i = 0; i < sk_X509_num(known.get()); ++i)
        if (isIssuerOf(context.crypto(), id, sk_X509_value(known.get(), i)))
            return derOf(sk_X509_value(known.get(), i));
    throw Failure(Code::IssuerMissing);
}

} // namespace

Bytes makeStatusRequest(Context& context, ByteView certificates, const RequestSigner& signer)
{
    const OwnContext own(context.crypto());
    ServerAccess servers(context);
    IssuerSearch search(context, servers);
    std::vector<OcspCertIdHandle> ids;
    std::vector<Bytes> issuers;
    for (const ByteView der : splitCertificateList(certificates)) {
        const X509Handle certificate = decodeX509(context.crypto(), der);
        const X509Handle issuer = findIssuer(context, search, certificate.get());
        ids.push_back(ocspCertId(context.crypto(), certificate.get(), issuer.get()));
        issuers.push_back(derOf(issuer.get()));
    }
    const OcspRequestHandle request = makeOcspRequest(context.crypto(), ids, signer);
    auto der = encodeDer<Bytes>(i2d_OCSP_REQUEST, request.get());
    context.ocspIssuers = std::move(issuers);
    return der;
}

Bytes exchangeStatus(Context& context, const std::string& url, ByteView certificate, ByteView request)
{
    decodeRequest(request);
    std::string address = url;
    if (address.empty()) {
        const X509Handle asked = decodeX509(context.crypto(), certificate);
        const std::vector<std::string> named = serviceUrls(asked.get(), NID_ad_OCSP);
        if (named.empty())
            throw failureOf(Code::OcspMissing, asked.get(), context.charset());
        address = named.front();
    }
    ServerAccess servers(context);
    Bytes reply = servers.network.post(address, ocspRequestType, request);
    if (!decodeDer<OcspResponseHandle>(d2i_OCSP_RESPONSE, reply))
        throw Failure(Code::ReplyDamaged, address);
    return reply;
}

StatusReport verifyStatusResponse(Context& context, ByteView request, ByteView response)
{
    const OwnContext own(context.crypto());
    const OcspRequestHandle asked = decodeRequest(request);
    const OcspAnswerHandle answer = openOcspResponse(response);
    ServerAccess servers(context);
    const X509Stack path = validPath(context, servers, issuerOfRequest(context, asked.get()), {});
    const bool isFresh = checkOcspAnswer(context, path, asked.get(), answer.get());
    StatusReport report;
    report.responder = ocspResponder(answer.get(), path);
    for (int i = 0; i < OCSP_request_onereq_count(asked.get()); ++i)
        report.statuses.push_back(ocspStatus(answer.get(), askedAt(asked.get(), i), isFresh));
    return report;
}

} // namespace qgtk
