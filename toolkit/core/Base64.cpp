#include "toolkit/core/Base64.h"

#include <array>
#include <climits>

#include "toolkit/core/Errors.h"
#include "toolkit/core/Handles.h"

namespace qgtk {

namespace {

/** OpenSSL keeps a line of the text and frees it unwiped: another line takes its place first. */
void freeDecoding(EVP_ENCODE_CTX* run)
{
    constexpr std::size_t line = 64;
    std::array<unsigned char, line> text;
    std::array<unsigned char, line> bytes;
    text.fill('A');
    int length = 0;
    EVP_DecodeInit(run);
    EVP_DecodeUpdate(run, bytes.data(), &length, text.data(), static_cast<int>(text.size()));
    EVP_ENCODE_CTX_free(run);
}

} // namespace

SecretBytes base64Encode(ByteView bytes)
{
    require(bytes.size() < INT_MAX / 2, Code::BadArgument);
    SecretBytes text((bytes.size() + 2) / 3 * 4 + 1);
    const int length = EVP_EncodeBlock(text.data(), bytes.data(), static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

SecretBytes base64Decode(ByteView text)
{
    // A '-' ends the text for OpenSSL, as PEM has it; here it is a fault like any other.
    const bool usable = text.size() < INT_MAX && textOf(text).find('-') == std::string_view::npos;
    require(usable, Code::Base64Damaged);
    const auto run = owned<Handle<EVP_ENCODE_CTX, freeDecoding>>(EVP_ENCODE_CTX_new());
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
