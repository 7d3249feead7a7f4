#include "toolkit/core/CmpTokenPairs.h"

#include <algorithm>

#include "toolkit/core/TokenBackedKey.h"
#include "toolkit/core/TokenCrypto.h"
#include "toolkit/core/TokenPairs.h"

namespace qgtk {

namespace {

/** A pair on the token that takes part in exchanges. */
struct TokenMember
{
    TokenMember(const Crypto& crypto, const TokenSession& session, const TokenPairId& pair)
        : purpose(pair.purpose), id(pair.id), key(crypto, session, pair.id)
    {}

    PairPurpose purpose;
    SecretBytes id;
    TokenBackedKey key;
    SecretBytes random;     /**< empty: none */
    X509Handle certificate; /**< null: none yet */
};

using Members = std::vector<std::unique_ptr<TokenMember>>;

/** The random value of a pair; empty when it has none. */
SecretBytes randomOf(const TokenSession& session, ByteView id)
{
    try {
        return readRandom(session, id);
    } catch (const Failure& failure) {
        if (failure.code() != Code::NoKeyRandom)
            throw;
        return {};
    }
}

/** Pairs that the token has already, each once, who signs last. */
Members findMembers(const Crypto& crypto, const TokenSession& session, const std::vector<TokenPairId>& pairs)
{
    require(!pairs.empty(), Code::BadArgument);
    Members members;
    for (const TokenPairId& pair : pairs) {
        if (std::ranges::any_of(members, [&](const auto& other) { return other->id == pair.id; }))
            continue;
        auto member = std::make_unique<TokenMember>(crypto, session, pair);
        const SecretBytes der = readCertificate(session, pair.id);
        requirePair(keyOfCertificate(crypto, Certificate(der)), member->key.key());
        member->certificate = decodeX509(crypto, der);
        member->random = randomOf(session, pair.id);
        members.push_back(std::move(member));
    }
    auto signer = std::ranges::find_if(
        members, [](const auto& member) { return member->purpose == PairPurpose::Signing; });
    if (signer == members.end())
        signer = members.begin();
    std::rotate(signer, signer + 1, members.end());
    return members;
}

CmpSigner signerOf(const TokenMember& member)
{
    return {share(member.certificate.get()), member.key.key()};
}

/** Pairs that are made on the token, and are deleted again unless they are kept. */
class NewTokenPairs
{
public:
    explicit NewTokenPairs(Context& context) : m_context(context), m_session(context.token.session()) {}
    NewTokenPairs(const NewTokenPairs&) = delete;
    NewTokenPairs& operator=(const NewTokenPairs&) = delete;
    ~NewTokenPairs()
    {
        for (const SecretBytes& id : m_ids)
            remove(id);
    }

    TokenMember& generate(PairPurpose purpose, SecretBytes id)
    {
        generatePair(m_session, configuredKeyKind(m_context), purpose, id, true);
        m_ids.push_back(id);
        members.push_back(std::make_unique<TokenMember>(m_context.crypto(), m_session,
                                                        TokenPairId{purpose, std::move(id)}));
        members.back()->random = freshRandom(m_context.crypto());
        return *members.back();
    }

    /** Writes a pair from elsewhere. */
    void write(const CmpPair& pair, SecretBytes id)
    {
        writePair(m_context.crypto(), m_session, pair.certificate, pair.key, id);
        m_ids.push_back(std::move(id));
    }

    void keep() { m_ids.clear(); }

    Members members;

private:
    void remove(ByteView id) const noexcept
    {
        try {
            deletePair(m_session, id);
        } catch (...) {
            // A token that fails or is gone: why the operation fails has been told.
        }
    }

    Context& m_context;
    const TokenSession& m_session;
    std::vector<SecretBytes> m_ids;
};

/** A certificate of a pair, not written yet. */
Bytes issue(CmpIssuing& issuing, const TokenMember& member, std::string_view idNumber, X509* old)
{
    return member.key.run([&] {
        return issuing.request({member.purpose, idNumber, member.random, old}, member.key.key());
    });
}

void write(const TokenSession& session, const Members& members, const std::vector<Bytes>& certificates)
{
    std::vector<TokenCertificateData> data;
    data.reserve(members.size());
    for (std::size_t i = 0; i < members.size(); ++i)
        data.push_back({members[i]->id, certificates[i], members[i]->random});
    writeCertificates(session, data);
}

/** Asks for certificates of members, in the place of old ones when there are; DER. */
std::vector<Bytes> issueAll(CmpIssuing& issuing, const Members& members, std::string_view idNumber,
                            const std::vector<X509*>& old)
{
    std::vector<Bytes> certificates;
    certificates.reserve(members.size());
    for (std::size_t i = 0; i < members.size(); ++i)
        certificates.push_back(issue(issuing, *members[i], idNumber, old.empty() ? nullptr : old[i]));
    return certificates;
}

X509* certificateOf(const std::unique_ptr<TokenMember>& member)
{
    return member->certificate.get();
}

X509* certificateOf(const OpenPair& pair)
{
    return pair.certificate.get();
}

template <typename Pairs>
std::vector<X509*> certificatesOf(const Pairs& pairs)
{
    std::vector<X509*> certificates;
    certificates.reserve(pairs.size());
    for (const auto& pair : pairs)
        certificates.push_back(certificateOf(pair));
    return certificates;
}

/** Asks for new certificates of the same keys. */
std::vector<CmpPair> issueSame(const Crypto& crypto, CmpIssuing& issuing, const std::vector<OpenPair>& open,
                               std::string_view idNumber)
{
    std::vector<CmpPair> pairs;
    pairs.reserve(open.size());
    for (const OpenPair& pair : open)
        pairs.push_back(issueFor(crypto, issuing, pair.purpose, idNumber,
                                 SecretBytes(pair.plainKey.begin(), pair.plainKey.end()),
                                 pair.certificate.get()));
    return pairs;
}

/** The identifier for pairs of a purpose. */
SecretBytes idOf(const std::vector<TokenPairId>& ids, PairPurpose purpose)
{
    const auto found = std::ranges::find(ids, purpose, &TokenPairId::purpose);
    require(found != ids.end(), Code::BadArgument);
    return found->id;
}

/** Throws TokenObjectExists when the token holds something under an identifier for pairs, or two of them have
 * the same. */
void requireFree(const TokenSession& session, const std::vector<OpenPair>& pairs,
                 const std::vector<TokenPairId>& ids)
{
    std::vector<SecretBytes> taken;
    for (const OpenPair& pair : pairs) {
        SecretBytes id = idOf(ids, pair.purpose);
        const bool isFree = std::ranges::find(taken, id) == taken.end() && !holdsPair(session, id);
        require(isFree, Code::TokenObjectExists);
        taken.push_back(std::move(id));
    }
}

/** The identifier that a pair has now. */
SecretBytes idNow(const Members& before, const Members& now, ByteView id)
{
    for (std::size_t i = 0; i < before.size(); ++i)
        if (std::ranges::equal(before[i]->id, id))
            return now[i]->id;
    throw Failure(Code::TokenObjectMissing);
}

} // namespace

std::vector<TokenPairId> requestTokenPairs(Context& context, const CmpApplication& application,
                                           const CmpSecret& secret, const std::vector<PairPurpose>& purposes)
{
    const Crypto& crypto = context.crypto();
    const TokenSession& session = context.token.session();
    const X509Handle authority = authorityOf(crypto, application);
    requireSecret(secret);
    NewTokenPairs made(context);
    std::vector<TokenPairId> ids;
    ids.reserve(purposes.size());
    for (const PairPurpose purpose : purposes)
        ids.push_back({purpose, made.generate(purpose, freshRandom(crypto)).id});
    // The server's time begins behind the token's, which may need a minute for a key.
    CmpExchange exchange(context, application.server, secret, {});
    exchange.setAuthority(share(authority.get()));
    CmpIssuing issuing(crypto, exchange);
    write(session, made.members, issueAll(issuing, made.members, application.idNumber, {}));
    issuing.finish(authority.get());
    made.keep();
    return ids;
}

std::vector<TokenPairId> updateTokenPairs(Context& context, const CmpApplication& application, bool newKeys,
                                          const std::vector<TokenPairId>& pairs)
{
    const Crypto& crypto = context.crypto();
    const TokenSession& session = context.token.session();
    const X509Handle authority = authorityOf(crypto, application);
    const Members members = findMembers(crypto, session, pairs);
    session.requireWritable();
    NewTokenPairs made(context);
    for (std::size_t i = 0; newKeys && i < members.size(); ++i)
        made.generate(members[i]->purpose, freshRandom(crypto));
    CmpExchange exchange(context, application.server, {}, signerOf(*members.back()));
    exchange.setAuthority(share(authority.get()));
    const Members& subjects = newKeys ? made.members : members;
    CmpIssuing issuing(crypto, exchange);
    const std::vector<Bytes> certificates = members.back()->key.run(
        [&] { return issueAll(issuing, subjects, application.idNumber, certificatesOf(members)); });
    write(session, subjects, certificates);
    issuing.finish(authority.get());
    made.keep();
    std::vector<TokenPairId> ids;
    ids.reserve(pairs.size());
    for (const TokenPairId& pair : pairs)
        ids.push_back({pair.purpose, idNow(members, subjects, pair.id)});
    return ids;
}

void movePairsToToken(Context& context, const CmpApplication& application, bool newKeys,
                      const std::vector<CmpPair>& pairs, const std::vector<TokenPairId>& ids)
{
    const Crypto& crypto = context.crypto();
    const TokenSession& session = context.token.session();
    const X509Handle authority = authorityOf(crypto, application);
    const std::vector<OpenPair> open = openPairs(crypto, pairs);
    session.requireLogin();
    session.requireWritable();
    requireFree(session, open, ids);
    NewTokenPairs made(context);
    for (std::size_t i = 0; newKeys && i < open.size(); ++i)
        made.generate(open[i].purpose, idOf(ids, open[i].purpose));
    CmpExchange exchange(context, application.server, {}, signerOf(open));
    exchange.setAuthority(share(authority.get()));
    CmpIssuing issuing(crypto, exchange);
    if (newKeys)
        write(session, made.members,
              issueAll(issuing, made.members, application.idNumber, certificatesOf(open)));
    else
        for (const CmpPair& pair : issueSame(crypto, issuing, open, application.idNumber))
            made.write(pair, idOf(ids, pair.purpose));
    issuing.finish(authority.get());
    made.keep();
}

void revokeTokenPairs(Context& context, const CmpServer& server, int reason,
                      const std::vector<TokenPairId>& pairs)
{
    requireReason(reason);
    const Members members = findMembers(context.crypto(), context.token.session(), pairs);
    CmpExchange exchange(context, server, {}, signerOf(*members.back()));
    members.back()->key.run([&] {
        exchange.revokeAll(certificatesOf(members), reason);
        return true;
    });
}

} // namespace qgtk
