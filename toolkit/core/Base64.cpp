#include "toolkit/core/Base64.h"

#include <climits>

#include "toolkit/core/Errors.h"
#include "toolkit/core/Handles.h"

namespace qgtk {

std::string base64Encode(ByteView bytes)
{
    require(bytes.size() < INT_MAX / 2, Code::BadArgument);
    std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0');
    const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()), bytes.data(),
                                       static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

SecretBytes base64Decode(ByteView text)
{
    // A '-' ends the text for OpenSSL, as PEM has it; here it is a fault like any other.
    const bool usable = text.size() < INT_MAX && textOf(text).find('-') == std::string_view::npos;
    require(usable, Code::Base64Damaged);
    const auto run = owned<Handle<EVP_ENCODE_CTX, EVP_ENCODE_CTX_free>>(EVP_ENCODE_CTX_new());
    SecretBytes bytes(text.size() + 3);
    int body = 0;
    int tail = 0;
    EVP_DecodeInit(run.get());
    const bool decoded =
        EVP_DecodeUpdate(run.get(), bytes.data(), &body, text.data(), static_cast<int>(text.size())) >= 0 &&
        EVP_DecodeFinal(run.get(), bytes.data() + body, &tail) == 1;
    require(decoded && body + tail > 0, Code::Base64Damaged);
    bytes.resize(static_cast<std::size_t>(body) + static_cast<std::size_t>(tail));
    return bytes;
}

} // namespace qgtk
