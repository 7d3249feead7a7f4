// Status requests, their responses and time stamp requests through the flat functions and the open toolkit,
// against OpenSSL alone.

#include <benchmark/benchmark.h>
#include <ctime>
#include <openssl/ocsp.h>
#include <openssl/rand.h>
#include <openssl/ts.h>
#include <quillgate/toolkit.h>

#include "Cryptography.h"

namespace {

using samplepki::Bytes;

constexpr const char* content = "what is stamped";

/** A request about the path's last certificate and the response, which the authority signs. */
struct Exchange
{
    Exchange();

    Bytes request;
    Bytes response;
};

template <typename I2d, typename T>
Bytes encoded(I2d i2d, T* object)
{
    unsigned char* der = nullptr;
    const int length = i2d(object, &der);
    Bytes bytes(reinterpret_cast<char*>(der), static_cast<std::size_t>(length));
    OPENSSL_free(der);
    return bytes;
}

template <typename D2i>
auto decoded(D2i d2i, const Bytes& der)
{
    const auto* position = reinterpret_cast<const unsigned char*>(der.data());
    return d2i(nullptr, &position, static_cast<long>(der.size()));
}

/** A request about the leaf with a nonce. */
OCSP_REQUEST* makeRequest(const BareOpenSsl& bare, X509* ca, const Bytes& leaf)
{
    X509* asked = bare.certificate(leaf);
    OCSP_REQUEST* request = OCSP_REQUEST_new();
    OCSP_request_add0_id(request, OCSP_cert_to_id(EVP_sha1(), asked, ca));
    OCSP_request_add1_nonce(request, nullptr, -1);
    X509_free(asked);
    return request;
}

Exchange::Exchange()
{
    const BareOpenSsl bare;
    X509* issuer = bare.certificate(path().ca);
    OCSP_REQUEST* asked = makeRequest(bare, issuer, path().leaf);
    OCSP_BASICRESP* basic = OCSP_BASICRESP_new();
    ASN1_TIME* now = ASN1_GENERALIZEDTIME_set(nullptr, std::time(nullptr));
    OCSP_CERTID* id = OCSP_onereq_get0_id(OCSP_request_onereq_get0(asked, 0));
    OCSP_basic_add1_status(basic, id, V_OCSP_CERTSTATUS_GOOD, 0, nullptr, now, nullptr);
    OCSP_copy_nonce(basic, asked);
    OCSP_basic_sign(basic, issuer, path().caKey.get(), EVP_sha256(), nullptr, 0);
    OCSP_RESPONSE* whole = OCSP_response_create(OCSP_RESPONSE_STATUS_SUCCESSFUL, basic);
    request = encoded(i2d_OCSP_REQUEST, asked);
    response = encoded(i2d_OCSP_RESPONSE, whole);
    OCSP_RESPONSE_free(whole);
    ASN1_GENERALIZEDTIME_free(now);
    OCSP_BASICRESP_free(basic);
    OCSP_REQUEST_free(asked);
    X509_free(issuer);
}

const Exchange& exchange()
{
    static const Exchange made;
    return made;
}

/** A context that trusts the root and knows the authority. */
class Asker : public Toolkit
{
public:
    Asker()
    {
        BINSTR root = record(path().root);
        BINSTR ca = record(path().ca);
        if (CertAddTrustedCert(context, &root) != 0 || ZR_SetCaPubs(context, &ca) != 0)
            throw std::runtime_error("the toolkit refuses the authorities");
    }
};

/** OpenSSL's functions for these know the default context alone. */
class AsDefault
{
public:
    /** The exchange is made ahead: its keys are kept for other benchmarks, and would outlive this context. */
    explicit AsDefault(const BareOpenSsl& bare)
    {
        exchange();
        m_before = OSSL_LIB_CTX_set0_default(bare.context);
    }
    ~AsDefault() { OSSL_LIB_CTX_set0_default(m_before); }
    AsDefault(const AsDefault&) = delete;
    AsDefault& operator=(const AsDefault&) = delete;

private:
    OSSL_LIB_CTX* m_before = nullptr;
};

void FloorStatusRequest(benchmark::State& state)
{
    const BareOpenSsl bare;
    const AsDefault own(bare);
    for (auto _ : state) {
        X509* issuer = bare.certificate(path().ca);
        OCSP_REQUEST* request = makeRequest(bare, issuer, path().leaf);
        benchmark::DoNotOptimize(encoded(i2d_OCSP_REQUEST, request));
        OCSP_REQUEST_free(request);
        X509_free(issuer);
    }
}

void StatusRequest(benchmark::State& state)
{
    const Asker asker;
    BINSTR leaf = record(path().leaf);
    BINSTR key = record(path().key);
    for (auto _ : state) {
        BINSTR request = {};
        if (OCSPMakeOCSPReq(asker.context, &leaf, false, &leaf, &key, &request) != 0)
            state.SkipWithError("no request");
        ZR_BINSTR_Delete(asker.context, &request);
    }
}

/** The path up to the root, then the response by the authority. */
bool bareVerify(const BareOpenSsl& bare, X509_STORE* store)
{
    OCSP_REQUEST* request = decoded(d2i_OCSP_REQUEST, exchange().request);
    OCSP_RESPONSE* response = decoded(d2i_OCSP_RESPONSE, exchange().response);
    OCSP_BASICRESP* basic = OCSP_response_get1_basic(response);
    X509* ca = bare.certificate(path().ca);
    STACK_OF(X509)* signers = sk_X509_new_null();
    sk_X509_push(signers, ca);
    X509_STORE_CTX* run = X509_STORE_CTX_new_ex(bare.context, nullptr);
    X509_STORE_CTX_init(run, store, ca, nullptr);
    OCSP_CERTID* id = OCSP_onereq_get0_id(OCSP_request_onereq_get0(request, 0));
    int status = V_OCSP_CERTSTATUS_UNKNOWN;
    const bool right = X509_verify_cert(run) == 1 &&
                       OCSP_basic_verify(basic, signers, store, OCSP_TRUSTOTHER) == 1 &&
                       OCSP_check_nonce(request, basic) == 1 &&
                       OCSP_resp_find_status(basic, id, &status, nullptr, nullptr, nullptr, nullptr) == 1 &&
                       status == V_OCSP_CERTSTATUS_GOOD;
    X509_STORE_CTX_free(run);
    sk_X509_pop_free(signers, X509_free);
    OCSP_BASICRESP_free(basic);
    OCSP_RESPONSE_free(response);
    OCSP_REQUEST_free(request);
    return right;
}

void FloorStatusResponse(benchmark::State& state)
{
    const BareOpenSsl bare;
    const AsDefault own(bare);
    X509_STORE* store = X509_STORE_new();
    X509* root = bare.certificate(path().root);
    X509_STORE_add_cert(store, root);
    for (auto _ : state)
        if (!bareVerify(bare, store))
            state.SkipWithError("the response is not right");
    X509_free(root);
    X509_STORE_free(store);
}

void StatusResponse(benchmark::State& state)
{
    const Asker asker;
    BINSTR request = record(exchange().request);
    BINSTR response = record(exchange().response);
    for (auto _ : state) {
        BINSTR signer = {};
        int count = 0;
        if (OCSPVerifyResMsg(asker.context, &request, &response, &count, &signer) != 0)
            state.SkipWithError("the response is not right");
        ZR_BINSTR_Delete(asker.context, &signer);
    }
}

void FloorStampRequest(benchmark::State& state)
{
    const BareOpenSsl bare;
    EVP_MD* sha256 = EVP_MD_fetch(bare.context, "SHA256", nullptr);
    for (auto _ : state) {
        unsigned char digest[EVP_MAX_MD_SIZE];
        unsigned length = 0;
        unsigned char nonce[16];
        EVP_Digest(content, std::char_traits<char>::length(content), digest, &length, sha256, nullptr);
        RAND_bytes_ex(bare.context, nonce, sizeof(nonce), 0);
        TS_REQ* request = TS_REQ_new();
        TS_MSG_IMPRINT* imprint = TS_MSG_IMPRINT_new();
        X509_ALGOR* algorithm = X509_ALGOR_new();
        X509_ALGOR_set_md(algorithm, sha256);
        TS_MSG_IMPRINT_set_algo(imprint, algorithm);
        TS_MSG_IMPRINT_set_msg(imprint, digest, static_cast<int>(length));
        BIGNUM* number = BN_bin2bn(nonce, sizeof(nonce), nullptr);
        ASN1_INTEGER* integer = BN_to_ASN1_INTEGER(number, nullptr);
        TS_REQ_set_version(request, 1);
        TS_REQ_set_msg_imprint(request, imprint);
        TS_REQ_set_nonce(request, integer);
        TS_REQ_set_cert_req(request, 1);
        benchmark::DoNotOptimize(encoded(i2d_TS_REQ, request));
        ASN1_INTEGER_free(integer);
        BN_free(number);
        X509_ALGOR_free(algorithm);
        TS_MSG_IMPRINT_free(imprint);
        TS_REQ_free(request);
    }
    EVP_MD_free(sha256);
}

void StampRequest(benchmark::State& state)
{
    const Asker asker;
    const Bytes data = content;
    BINSTR input = record(data);
    BINSTR leaf = record(path().leaf);
    BINSTR key = record(path().key);
    char policy[] = "";
    for (auto _ : state) {
        BINSTR request = {};
        if (TSPMakeReqMsg(asker.context, &input, QG_HASH_SHA256, policy, false, &leaf, &key, &request) != 0)
            state.SkipWithError("no request");
        ZR_BINSTR_Delete(asker.context, &request);
    }
}

BENCHMARK(FloorStatusRequest)->Unit(benchmark::kMicrosecond);
BENCHMARK(StatusRequest)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorStatusResponse)->Unit(benchmark::kMicrosecond);
BENCHMARK(StatusResponse)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorStampRequest)->Unit(benchmark::kMicrosecond);
BENCHMARK(StampRequest)->Unit(benchmark::kMicrosecond);

} // namespace
