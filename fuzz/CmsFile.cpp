// Messages in files, which are taken apart by our own reader.

#include <algorithm>
#include <array>

#include "MemoryFile.h"
#include "Target.h"
#include "toolkit/core/CmsObjects.h"
#include "toolkit/core/MessageFile.h"

using namespace qgtk;

namespace {

Bytes contentOfFile(MessageFile& file)
{
    Bytes content;
    std::array<std::uint8_t, 100> piece{};
    while (const std::size_t count = file.readContent(piece))
        content.insert(content.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count));
    return content;
}

/** What our reader takes out of a signed message is what OpenSSL, which decodes whole ones, finds in it. */
void compareContents(const Crypto& crypto, ByteView message, const Bytes& content)
{
    const CmsHandle decoded = decodeMessage(crypto, message);
    requireKind(decoded.get(), NID_pkcs7_signed);
    const ASN1_OCTET_STRING* carried = carriedContent(decoded.get());
    expect(carried != nullptr && std::ranges::equal(contentOf(carried), content));
}

} // namespace

void fuzz(ByteView input)
{
    static const Crypto crypto;
    static const MemoryFile file;
    expect(file.fill(input));
    attempt([&] {
        MessageFile message(file.path());
        const bool carries = message.carriesContent();
        const Bytes content = carries ? contentOfFile(message) : Bytes();
        if (carries)
            attempt([&] { compareContents(crypto, input, content); });
        decodeMessage(crypto, message.rest());
    });
}
