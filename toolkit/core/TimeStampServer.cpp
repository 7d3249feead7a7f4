#include "toolkit/core/TimeStampServer.h"

#include "toolkit/core/ServerAccess.h"
#include "toolkit/core/TimeStamp.h"

namespace qgtk {

Bytes exchangeTimeStamp(Context& context, const std::string& host, int port, ByteView request)
{
    requireStampRequest(request);
    ServerAccess servers(context);
    Bytes reply = host.find("://") != std::string::npos
                      ? servers.network.post(host, "application/timestamp-query", request)
                      : servers.network.send(host, port, request);
    if (!isStampResponse(reply))
        throw Failure(Code::ReplyDamaged, host);
    context.stampRequest.assign(request.begin(), request.end());
    return reply;
}

} // namespace qgtk
