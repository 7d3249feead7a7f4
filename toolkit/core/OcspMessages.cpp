#include "toolkit/core/OcspMessages.h"

#include "toolkit/core/PathValidation.h"

namespace qgtk {

namespace {

/** Answers may be so many seconds from another clock's future or past. */
constexpr long clockSkew = 300;

/** Seconds for which an answer holds that says neither how long it does nor what it was asked. */
constexpr long longestSilence = 86'400;

} // namespace

RequestSigner requestSigner(const Crypto& crypto, ByteView certificate, ByteView plainKey)
{
    const PlainKeyHandle plain = decodePlainKey(plainKey);
    RequestSigner signer{decodeX509(crypto, certificate),
                         KeyHandle(EVP_PKCS82PKEY_ex(plain.get(), crypto.context(), nullptr))};
    require(signer.key != nullptr, Code::KeyNotPlain);
    require(X509_check_private_key(signer.certificate.get(), signer.key.get()) == 1, Code::KeyMismatch);
    return signer;
}

OcspCertIdHandle ocspCertId(const Crypto& crypto, X509* certificate, X509* issuer)
{
    const DigestHandle sha1 = crypto.digest("SHA1"); // what every responder knows
    return owned<OcspCertIdHandle>(OCSP_cert_to_id(sha1.get(), certificate, issuer));
}

OcspRequestHandle makeOcspRequest(const Crypto& crypto, const std::vector<OcspCertIdHandle>& ids,
                                  const RequestSigner& signer)
{
    auto request = owned<OcspRequestHandle>(OCSP_REQUEST_new());
    for (const OcspCertIdHandle& id : ids) {
        auto copy = owned<OcspCertIdHandle>(OCSP_CERTID_dup(id.get()));
        if (!OCSP_request_add0_id(request.get(), copy.get()))
            throw std::bad_alloc();
        static_cast<void>(copy.release());
    }
    OCSP_request_add1_nonce(request.get(), nullptr, -1);
    if (!signer.certificate)
        return request;
    const DigestHandle digest = crypto.digest("SHA256");
    require(OCSP_request_sign(request.get(), signer.certificate.get(), signer.key.get(), digest.get(),
                              nullptr, 0) == 1,
            Code::CryptoUnavailable);
    return request;
}

OcspAnswerHandle openOcspResponse(ByteView der)
{
    const auto response = decodeDer<OcspResponseHandle>(d2i_OCSP_RESPONSE, der);
    require(response != nullptr, Code::ReplyDamaged);
    require(OCSP_response_status(response.get()) == OCSP_RESPONSE_STATUS_SUCCESSFUL, Code::OcspRefused);
    OcspAnswerHandle answer(OCSP_response_get1_basic(response.get()));
    require(answer != nullptr, Code::ReplyDamaged);
    return answer;
}

bool checkOcspAnswer(Context& context, const X509Stack& path, OCSP_REQUEST* request, OCSP_BASICRESP* answer)
{
    const StoreHandle store = anchoredOn(context, path);
    require(OCSP_basic_verify(answer, path.get(), store.get(), 0) == 1, Code::OcspUntrusted);
    constexpr int differs = 0;
    constexpr int equals = 1;
    const int nonce = OCSP_check_nonce(request, answer);
    require(nonce != differs, Code::OcspUntrusted);
    return nonce == equals;
}

Bytes ocspResponder(OCSP_BASICRESP* answer, const X509Stack& path)
{
    X509* responder = nullptr;
    if (OCSP_resp_get0_signer(answer, &responder, path.get()) != 1)
        return {};
    return derOf(responder);
}

OcspStatus ocspStatus(OCSP_BASICRESP* answer, OCSP_CERTID* id, bool isFresh)
{
    int status = V_OCSP_CERTSTATUS_UNKNOWN;
    int reason = -1;
    ASN1_GENERALIZEDTIME* revoked = nullptr;
    ASN1_GENERALIZEDTIME* from = nullptr;
    ASN1_GENERALIZEDTIME* until = nullptr;
    if (OCSP_resp_find_status(answer, id, &status, &reason, &revoked, &from, &until) != 1)
        return {};
    const long mostAge = isFresh || until ? -1 : longestSilence;
    require(OCSP_check_validity(from, until, clockSkew, mostAge) == 1, Code::OcspOutdated);
    if (status == V_OCSP_CERTSTATUS_REVOKED)
        return {CertificateState::Revoked, revocationEntry(revoked, reason)};
    return {status == V_OCSP_CERTSTATUS_GOOD ? CertificateState::Good : CertificateState::Unknown, {}};
}

void requireGood(const OcspStatus& status)
{
    require(status.state != CertificateState::Revoked, Code::CertRevoked);
    require(status.state == CertificateState::Good, Code::OcspUnknown);
}

} // namespace qgtk
