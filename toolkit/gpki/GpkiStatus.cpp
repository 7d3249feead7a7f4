/* The government PKI library's interface: status requests and validation services. */

#define QGTK_PREFIX GPKI_

#include "toolkit/interface/Status.h"

using namespace qgtk;

#include "toolkit/interface/StatusOperations.inc"

QGTK_OPERATION(OCSP_VerifyResMsg)
(void* handle, BINSTR* request, BINSTR* response, int* count, BINSTR* responder)
{
    return callOn(handle, [&](Context& context) {
        context.ocspStatuses.clear();
        StatusReport report = verifyStatusResponse(context, viewOf(request), viewOf(response));
        require(count != nullptr, Code::BadArgument);
        if (responder)
            assign(responder, report.responder);
        *count = static_cast<int>(report.statuses.size());
        context.ocspStatuses = std::move(report.statuses);
    });
}

QGTK_OPERATION(OCSP_GetCertStatus)(void* handle, int index, int* state, char* date, int* reason)
{
    return callOn(handle, [&](Context& context) {
        require(index >= 0 && static_cast<std::size_t>(index) < context.ocspStatuses.size(),
                Code::OcspNoStatus);
        const OcspStatus& status = context.ocspStatuses[static_cast<std::size_t>(index)];
        store(state, static_cast<int>(status.state));
        storeRevocation(status.entry, date, reason);
    });
}
