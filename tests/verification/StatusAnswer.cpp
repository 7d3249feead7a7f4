#include "StatusAnswer.h"

#include <openssl/ocsp.h>

#include "toolkit/core/X509Objects.h"

using samplepki::Bytes;

namespace {

using qgtk::Handle;
using AnswerHandle = Handle<OCSP_BASICRESP, OCSP_BASICRESP_free>;
using RequestHandle = Handle<OCSP_REQUEST, OCSP_REQUEST_free>;
using ResponseHandle = Handle<OCSP_RESPONSE, OCSP_RESPONSE_free>;
using TimeHandle = Handle<ASN1_TIME, ASN1_TIME_free>;

template <typename H, typename D2i>
H decode(D2i d2i, const Bytes& der)
{
    const auto* position = reinterpret_cast<const unsigned char*>(der.data());
    return H(d2i(nullptr, &position, static_cast<long>(der.size())));
}

TimeHandle timeOf(std::time_t instant)
{
    return TimeHandle(ASN1_GENERALIZEDTIME_set(nullptr, instant));
}

} // namespace

Bytes answerGood(const Bytes& request, const StatusAnswer& answer)
{
    const auto asked = decode<RequestHandle>(d2i_OCSP_REQUEST, request);
    const auto signer = decode<qgtk::X509Handle>(d2i_X509, answer.signer);
    const AnswerHandle basic(OCSP_BASICRESP_new());
    OCSP_CERTID* id = OCSP_onereq_get0_id(OCSP_request_onereq_get0(asked.get(), 0));
    if (answer.aboutAnother) {
        ASN1_INTEGER* serial = nullptr;
        OCSP_id_get0_info(nullptr, nullptr, nullptr, &serial, id);
        ASN1_INTEGER_set(serial, 1);
    }
    const TimeHandle from = timeOf(answer.from);
    const TimeHandle until = answer.until ? timeOf(*answer.until) : nullptr;
    OCSP_basic_add1_status(basic.get(), id, V_OCSP_CERTSTATUS_GOOD, 0, nullptr, from.get(), until.get());
    if (answer.repeatsNonce)
        OCSP_copy_nonce(basic.get(), asked.get());
    if (answer.hasOwnNonce)
        OCSP_basic_add1_nonce(basic.get(), nullptr, -1);
    OCSP_basic_sign(basic.get(), signer.get(), answer.key.get(), EVP_sha256(), nullptr, 0);
    const ResponseHandle response(OCSP_response_create(OCSP_RESPONSE_STATUS_SUCCESSFUL, basic.get()));
    const auto der = qgtk::encodeDer<qgtk::Bytes>(i2d_OCSP_RESPONSE, response.get());
    return {der.begin(), der.end()};
}

bool isSignedBy(const Bytes& request, const Bytes& certificate)
{
    const auto asked = decode<RequestHandle>(d2i_OCSP_REQUEST, request);
    const auto signer = decode<qgtk::X509Handle>(d2i_X509, certificate);
    if (!asked || OCSP_request_is_signed(asked.get()) != 1)
        return false;
    const qgtk::X509Stack signers(sk_X509_new_null());
    qgtk::push(signers, signer.get());
    return OCSP_request_verify(asked.get(), signers.get(), nullptr, OCSP_NOVERIFY) == 1;
}
