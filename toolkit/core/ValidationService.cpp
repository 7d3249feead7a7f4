#include "toolkit/core/ValidationService.h"

#include "toolkit/core/Media.h"
#include "toolkit/core/Verification.h"

namespace qgtk {

void verifyByService(Context& context, const std::string& configurationFile, ByteView certificate,
                     ByteView asker)
{
    decodeX509(context.crypto(), asker);
    readFile(configurationFile,
             maxObjectLength); // a file that isn't there is told, not taken for an empty one
    const std::string url = Configuration::read(configurationFile).serviceUrl;
    if (url.empty())
        throw Failure(Code::ServiceMissing, configurationFile);
    OcspAnswer answer;
    checkStatusByOcsp(context, certificate, {url, configurationFile}, {}, answer);
}

} // namespace qgtk
