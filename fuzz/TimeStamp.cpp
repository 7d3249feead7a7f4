// Answers of time stamp servers, and tokens.

#include "toolkit/core/TimeStamp.h"
#include "Material.h"
#include "Target.h"

using namespace qgtk;

namespace {

struct Asker
{
    Asker()
    {
        trustAuthorities(context);
        context.stampRequest = material("stamp-request");
    }

    Context context{""};
};

} // namespace

void fuzz(ByteView input)
{
    static Asker asker;
    attempt([&] { requireStampRequest(input); });
    if (isStampResponse(input))
        attempt([&] { verifyStampResponse(asker.context, input); });
    attempt([&] { fieldsOfToken(asker.context, input); });
    attempt([&] { verifyToken(asker.context, bytesOf("content"), input); });
}
