// Answers of status responders, and requests that a caller hands over.

#include "Material.h"
#include "Target.h"
#include "toolkit/core/OcspExchange.h"

using namespace qgtk;

namespace {

struct Asker
{
    Asker() { trustAuthorities(context); }

    Context context{""};
    Bytes request = material("status-request");
    Bytes answer = material("status-answer");
};

} // namespace

void fuzz(ByteView input)
{
    static Asker asker;
    attempt([&] { verifyStatusResponse(asker.context, asker.request, input); });
    attempt([&] { verifyStatusResponse(asker.context, input, asker.answer); });
    attempt([&] { verifyStatusResponse(asker.context, input, input); });
}
