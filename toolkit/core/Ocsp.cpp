#include "toolkit/core/Ocsp.h"

namespace qgtk {

namespace {

void ask(Context& context, Network& network, const X509Stack& path, int place, const std::string& url,
         const RequestSigner& signer, OcspAnswer& answer)
{
    const OwnContext own(context.crypto());
    std::vector<OcspCertIdHandle> ids;
    ids.push_back(
        ocspCertId(context.crypto(), sk_X509_value(path.get(), place), sk_X509_value(path.get(), place + 1)));
    const OcspRequestHandle request = makeOcspRequest(context.crypto(), ids, signer);
    const auto der = encodeDer<Bytes>(i2d_OCSP_REQUEST, request.get());
    const OcspAnswerHandle basic = openOcspResponse(network.post(url, ocspRequestType, der));
    const bool isFresh = checkOcspAnswer(context, path, request.get(), basic.get());
    answer.responder = ocspResponder(basic.get(), path);
    const OcspStatus status = ocspStatus(basic.get(), ids.front().get(), isFresh);
    answer.entry = status.entry;
    requireGood(status);
}

} // namespace

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
