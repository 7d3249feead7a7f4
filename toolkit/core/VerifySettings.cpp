#include "toolkit/core/VerifySettings.h"

#include "toolkit/core/CertificateText.h"
#include "toolkit/core/Errors.h"

namespace qgtk {

bool wholeChainOf(int range)
{
    require(range == 0 || range == 1, Code::BadArgument);
    return range == 0;
}

std::optional<std::time_t> referenceTimeOf(const char* text)
{
    if (!text || !*text)
        return std::nullopt;
    return parseTimeText(text);
}

StatusSource sourceOf(int check, std::initializer_list<StatusSource> sources)
{
    require(check >= 0 && static_cast<std::size_t>(check) < sources.size(), Code::BadArgument);
    return *(sources.begin() + check);
}

} // namespace qgtk
