/* The main toolkit's interface: status requests and validation services. */

#define QGTK_PREFIX ZRTK_

#include <algorithm>

#include "toolkit/interface/Status.h"

using namespace qgtk;

#include "toolkit/interface/StatusOperations.inc"

/* Without an operation that tells the statuses, the result is the verdict on all of them. */
QGTK_OPERATION(OCSP_VerifyResMsg)(void* handle, BINSTR* request, BINSTR* response, BINSTR* responder)
{
    return callOn(handle, [&](Context& context) {
        const StatusReport report = verifyStatusResponse(context, viewOf(request), viewOf(response));
        std::ranges::for_each(report.statuses, requireGood);
        if (responder)
            assign(responder, report.responder);
    });
}

QGTK_OPERATION(OCSP_CheckCertStatus)
(void* handle, char* url, BINSTR* certificate, bool sign, BINSTR* signerCertificate, BINSTR* signerKey)
{
    return callOn(handle, [&](Context& context) {
        const RequestSigner signer = signerWhen(context, sign, signerCertificate, signerKey);
        OcspAnswer answer;
        checkStatusByOcsp(context, viewOf(certificate), {std::string(textArgument(url))}, signer, answer);
    });
}
