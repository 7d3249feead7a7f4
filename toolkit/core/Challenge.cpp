#include "toolkit/core/Challenge.h"

#include <algorithm>

namespace qgtk {

namespace {

constexpr std::string_view label = "SIGEA challenge 1";
constexpr std::size_t randomLength = 32;
constexpr std::size_t maxOpen = 1000;

void requireChallenge(ByteView challenge)
{
    require(challenge.size() == label.size() + randomLength && textOf(challenge).starts_with(label),
            Code::ChallengeDamaged);
}

} // namespace

Bytes makeChallenge(Context& context)
{
    Bytes challenge(bytesOf(label).begin(), bytesOf(label).end());
    challenge.resize(label.size() + randomLength);
    context.crypto().random(std::span(challenge).subspan(label.size()));
    std::deque<Bytes>& open = context.messages.challenges;
    open.push_back(challenge);
    if (open.size() > maxOpen)
        open.pop_front();
    return challenge;
}

Bytes answerChallenge(Context& context, const RequestSigner& signer, ByteView challenge)
{
    requireChallenge(challenge);
    return signMessage(context, signer, signingForm(context, 0, nullptr), challenge);
}

void checkResponse(Context& context, int options, ByteView response, ByteView challenge, ByteView certificate)
{
    requireChallenge(challenge);
    std::deque<Bytes>& open = context.messages.challenges;
    const auto asked =
        std::ranges::find_if(open, [&](const Bytes& made) { return std::ranges::equal(made, challenge); });
    require(asked != open.end(), Code::ChallengeUnknown);
    const X509Handle expected = decodeX509(context.crypto(), certificate);
    const CmsHandle message = decodeMessage(context.crypto(), response);
    requireKind(message.get(), NID_pkcs7_signed);
    const ASN1_OCTET_STRING* content = carriedContent(message.get());
    require(content && std::ranges::equal(contentOf(content), challenge), Code::ResponseOther);
    verifyMessage(context, message.get(), options, nullptr, [](ByteView) {});
    const std::vector<MessageSigner>& signers = context.messages.signers;
    require(signers.size() == 1 && signers.front().certificate == derOf(expected.get()),
            Code::ResponseForeign);
    open.erase(asked);
}

} // namespace qgtk
