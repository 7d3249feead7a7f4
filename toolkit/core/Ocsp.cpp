#include "toolkit/core/Ocsp.h"

#include <openssl/ocsp.h>

namespace qgtk {

namespace {

using AnswerHandle = Handle<OCSP_BASICRESP, OCSP_BASICRESP_free>;
using CertIdHandle = Handle<OCSP_CERTID, OCSP_CERTID_free>;
using RequestHandle = Handle<OCSP_REQUEST, OCSP_REQUEST_free>;
using ResponseHandle = Handle<OCSP_RESPONSE, OCSP_RESPONSE_free>;

/** Answers may be so many seconds from another clock's future or past. */
constexpr long clockSkew = 300;

/** Seconds for which an answer holds that says neither how long it does nor what it was asked. */
constexpr long longestSilence = 86'400;

/** OpenSSL's status functions know the default context alone: it is the toolkit's for a while, on this
 * thread. */
class OwnContext
{
public:
    explicit OwnContext(const Crypto& crypto) : m_before(OSSL_LIB_CTX_set0_default(crypto.context())) {}
    ~OwnContext() { OSSL_LIB_CTX_set0_default(m_before); }
    OwnContext(const OwnContext&) = delete;
    OwnContext& operator=(const OwnContext&) = delete;

private:
    OSSL_LIB_CTX* m_before;
};

CertIdHandle certIdOf(const Crypto& crypto, X509* certificate, X509* issuer)
{
    const DigestHandle sha1 = crypto.digest("SHA1"); // what every responder knows
    return owned<CertIdHandle>(OCSP_cert_to_id(sha1.get(), certificate, issuer));
}

RequestHandle makeRequest(const Crypto& crypto, const OCSP_CERTID* id, const RequestSigner& signer)
{
    auto request = owned<RequestHandle>(OCSP_REQUEST_new());
    auto copy = owned<CertIdHandle>(OCSP_CERTID_dup(id));
    if (!OCSP_request_add0_id(request.get(), copy.get()))
        throw std::bad_alloc();
    static_cast<void>(copy.release());
    OCSP_request_add1_nonce(request.get(), nullptr, -1);
    if (!signer.certificate)
        return request;
    const DigestHandle digest = crypto.digest("SHA256");
    require(OCSP_request_sign(request.get(), signer.certificate.get(), signer.key.get(), digest.get(),
                              nullptr, 0) == 1,
            Code::CryptoUnavailable);
    return request;
}

AnswerHandle openResponse(ByteView der)
{
    const auto response = decodeDer<ResponseHandle>(d2i_OCSP_RESPONSE, der);
    require(response != nullptr, Code::ReplyDamaged);
    require(OCSP_response_status(response.get()) == OCSP_RESPONSE_STATUS_SUCCESSFUL, Code::OcspRefused);
    AnswerHandle answer(OCSP_response_get1_basic(response.get()));
    require(answer != nullptr, Code::ReplyDamaged);
    return answer;
}

/**
 * Signature, the signer's right to answer, and that the answer is no one else's. Whether it was made for this
 * very request: a responder that leaves the nonce out answers from its store.
 */
bool checkAnswer(Context& context, const X509Stack& path, OCSP_REQUEST* request, OCSP_BASICRESP* answer)
{
    // The path is trusted by now; its own certificates are the anchors of the answer's signer.
    const auto store = owned<StoreHandle>(X509_STORE_new());
    for (int i = 0; i < sk_X509_num(path.get()); ++i)
        X509_STORE_add_cert(store.get(), sk_X509_value(path.get(), i));
    X509_VERIFY_PARAM* parameters = X509_STORE_get0_param(store.get());
    X509_VERIFY_PARAM_set_flags(parameters, X509_V_FLAG_PARTIAL_CHAIN);
    if (context.verifySettings.time)
        X509_VERIFY_PARAM_set_time(parameters, *context.verifySettings.time);
    require(OCSP_basic_verify(answer, path.get(), store.get(), 0) == 1, Code::OcspUntrusted);
    constexpr int differs = 0;
    constexpr int equals = 1;
    const int nonce = OCSP_check_nonce(request, answer);
    require(nonce != differs, Code::OcspUntrusted);
    return nonce == equals;
}

void readStatus(OCSP_BASICRESP* basic, OCSP_CERTID* id, bool isFresh, OcspAnswer& answer)
{
    int status = V_OCSP_CERTSTATUS_UNKNOWN;
    int reason = -1;
    ASN1_GENERALIZEDTIME* revoked = nullptr;
    ASN1_GENERALIZEDTIME* from = nullptr;
    ASN1_GENERALIZEDTIME* until = nullptr;
    require(OCSP_resp_find_status(basic, id, &status, &reason, &revoked, &from, &until) == 1,
            Code::OcspUnknown);
    const long mostAge = isFresh || until ? -1 : longestSilence;
    require(OCSP_check_validity(from, until, clockSkew, mostAge) == 1, Code::OcspOutdated);
    require(status != V_OCSP_CERTSTATUS_UNKNOWN, Code::OcspUnknown);
    if (status == V_OCSP_CERTSTATUS_GOOD)
        return;
    answer.entry = revocationEntry(revoked, reason);
    throw Failure(Code::CertRevoked);
}

void ask(Context& context, Network& network, const X509Stack& path, int place, const std::string& url,
         const RequestSigner& signer, OcspAnswer& answer)
{
    const OwnContext own(context.crypto());
    const CertIdHandle id =
        certIdOf(context.crypto(), sk_X509_value(path.get(), place), sk_X509_value(path.get(), place + 1));
    const RequestHandle request = makeRequest(context.crypto(), id.get(), signer);
    const auto der = encodeDer<Bytes>(i2d_OCSP_REQUEST, request.get());
    const AnswerHandle basic = openResponse(network.post(url, "application/ocsp-request", der));
    const bool isFresh = checkAnswer(context, path, request.get(), basic.get());
    X509* responder = nullptr;
    if (OCSP_resp_get0_signer(basic.get(), &responder, path.get()) == 1)
        answer.responder = derOf(responder);
    readStatus(basic.get(), id.get(), isFresh, answer);
}

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

void checkByResponder(Context& context, Network& network, const X509Stack& path, int place,
                      const std::string& url, const RequestSigner& signer, OcspAnswer& answer)
{
    X509* certificate = sk_X509_value(path.get(), place);
    const std::vector<std::string> named = serviceUrls(certificate, NID_ad_OCSP);
    try {
        require(!url.empty() || !named.empty(), Code::OcspMissing);
        ask(context, network, path, place, url.empty() ? named.front() : url, signer, answer);
    } catch (const Failure& failure) {
        throw failureOf(failure.code(), certificate, context.charset(), failure.detail());
    }
}

} // namespace qgtk
