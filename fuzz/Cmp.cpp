// What authorities answer by CMP, and keys that they give back.

#include "FakeNetwork.h"
#include "Material.h"
#include "Target.h"
#include "toolkit/core/CmpPairs.h"
#include "toolkit/core/CmpRecoveryMessage.h"

using namespace qgtk;

namespace {

constexpr std::size_t mostLength = 16384;

struct Holder
{
    Holder()
    {
        context.setCaCertificates(material("authority"));
        context.cmp.protocol = CmpProtocol::Tcp;
        const Bytes plain = material("curve-holder-key");
        pairs.push_back(
            {PairPurpose::Signing, material("curve-holder"), SecretBytes(plain.begin(), plain.end())});
    }

    Context context{""};
    std::vector<CmpPair> pairs;
    const KeyHandle key = privateKeyFrom(context.crypto(), material("holder-key"));
};

/** A message over TCP (RFC 2510, section 5.2): the last one. */
Bytes framed(ByteView message)
{
    const std::size_t length = message.size() + 1;
    Bytes bytes{0, 0, static_cast<std::uint8_t>(length >> 8), static_cast<std::uint8_t>(length), 5};
    bytes.insert(bytes.end(), message.begin(), message.end());
    return bytes;
}

} // namespace

void fuzz(ByteView input)
{
    static Holder holder;
    if (input.empty() || input.size() > mostLength)
        return;
    const Bytes answer = framed(input);
    const FakeReply reply(answer);
    attempt([&] { revokePairs(holder.context, {"127.0.0.1", 829}, 1, holder.pairs); });
    attempt([&] { recoveryContent(input); });
    attempt([&] { openEncryptedValue(holder.context.crypto(), input, holder.key.get()); });
    isAnswerTo(input, input);
}
