#include "Samples.h"

#include <future>

using namespace samplepki;

namespace {

constexpr const char* notice = "이 인증서는 시험용 인증서입니다";

/** Keys of a holder, still being generated. */
struct PendingKeys
{
    std::future<KeyPair> sign;
    std::future<KeyPair> km; /**< without a state when the holder has no key-management pair */
};

std::future<KeyPair> generateLater(KeyKind kind)
{
    return std::async(std::launch::async, [kind] { return KeyPair::generate(kind); });
}

std::vector<PendingKeys> generateHolderKeys()
{
    std::vector<PendingKeys> keys;
    for (const auto& plan : holderPlans()) {
        const bool withKm = plan.keyManagement != KeyManagement::None;
        keys.push_back(
            {generateLater(plan.key), withKm ? generateLater(KeyKind::Rsa2048) : std::future<KeyPair>()});
    }
    return keys;
}

std::vector<Authority> makeRoots()
{
    std::vector<Authority> roots;
    for (const char* subject : rootPlans())
        roots.push_back(Authority::root(nameFromText(subject), KeyPair::generate(KeyKind::Rsa2048)));
    return roots;
}

std::vector<Authority> makeIssuers(std::vector<Authority>& roots)
{
    std::vector<Authority> issuers;
    for (const auto& plan : issuerPlans()) {
        Authority& root = roots[static_cast<std::size_t>(plan.root)];
        issuers.push_back(root.intermediate(nameFromText(plan.subject), KeyPair::generate(KeyKind::Rsa2048)));
    }
    return issuers;
}

Validity validity(State state, int days)
{
    switch (state) {
    case State::Valid:
        return Validity::days(-30, days);
    case State::Renewal:
        return Validity::days(-351, 14);
    case State::Expired:
        return Validity::days(-385, -20);
    }
    return {};
}

Request makeRequest(const HolderPlan& plan, const SampleOptions& options)
{
    const IssuerPlan& issuer = issuerPlans()[static_cast<std::size_t>(plan.issuer)];
    return {.subject = nameFromText(plan.subject, plan.stringType),
            .key = {},
            .validity = validity(plan.state, options.days),
            .policies = {{plan.policy, notice, issuer.cps}},
            .crlPoints = {issuer.crlPoint},
            .ocspUrl = issuer.ocsp,
            .identity = Identity{commonName(nameFromText(plan.subject)), plan.identity}};
}

Holder makeHolder(const HolderPlan& plan, Authority& issuer, PendingKeys& keys, const SampleOptions& options)
{
    Request request = makeRequest(plan, options);
    const auto pair = [&](const KeyPair& key, const std::string& password) {
        request.key = key;
        const KeyPair stored = plan.keyRandom ? key : key.withRandom({});
        return filePair(issuer.issue(request), stored, password, plan.form);
    };
    Holder holder{pair(keys.sign.get(), options.password)};
    request.keyUsage = EnvelopeUse;
    if (keys.km.valid())
        holder.km = pair(keys.km.get(), keyManagementPassword(plan, options));
    return holder;
}

std::vector<Bytes> certificates(const std::vector<Authority>& authorities)
{
    std::vector<Bytes> list;
    list.reserve(authorities.size());
    for (const auto& authority : authorities)
        list.push_back(authority.certificate());
    return list;
}

std::filesystem::path writeHolder(const std::filesystem::path& home, const HolderPlan& plan,
                                  const Holder& files)
{
    const std::string name = commonName(nameFromText(plan.subject));
    switch (plan.place) {
    case Place::Npki:
        return writeNpkiHolder(home, plan.folder, plan.subject, files, plan.spelling);
    case Place::Gpki:
        return writeGpkiPairs(home, plan.folder, name, files, plan.spelling);
    case Place::MpkiPairs:
        return writeMpkiPairs(home, name, files, plan.spelling);
    case Place::MpkiHolder:
        return writeMpkiHolder(home, plan.subject, files, plan.spelling);
    }
    return {};
}

/** "yessignCA Class 2" becomes "yessignCA-Class-2.der". */
std::string certificateFile(const char* subject)
{
    std::string name = commonName(nameFromText(subject));
    for (char& c : name)
        c = c == ' ' ? '-' : c;
    return name + ".der";
}

} // namespace

SampleSet makeSamples(const SampleOptions& options)
{
    auto keys = generateHolderKeys();
    auto roots = makeRoots();
    auto issuers = makeIssuers(roots);
    SampleSet samples{certificates(roots), certificates(issuers), {}};
    for (const auto& plan : holderPlans()) {
        Authority& issuer = issuers[static_cast<std::size_t>(plan.issuer)];
        samples.holders.push_back({&plan, makeHolder(plan, issuer, keys[samples.holders.size()], options)});
    }
    return samples;
}

std::string keyManagementPassword(const HolderPlan& plan, const SampleOptions& options)
{
    if (plan.keyManagement == KeyManagement::None)
        return {};
    return options.password + (plan.keyManagement == KeyManagement::OwnPassword ? "-km" : "");
}

std::vector<std::filesystem::path> writeHome(const std::filesystem::path& home, const SampleSet& samples)
{
    std::vector<std::filesystem::path> places;
    for (const auto& sample : samples.holders)
        places.push_back(writeHolder(home, *sample.plan, sample.files));
    return places;
}

void writeAuthorities(const std::filesystem::path& directory, const SampleSet& samples)
{
    for (std::size_t i = 0; i < samples.roots.size(); ++i)
        writePrivateFile(directory / certificateFile(rootPlans()[i]), samples.roots[i]);
    for (std::size_t i = 0; i < samples.issuers.size(); ++i)
        writePrivateFile(directory / certificateFile(issuerPlans()[i].subject), samples.issuers[i]);
}
