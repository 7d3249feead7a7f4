#include "Scenes.h"

#include <filesystem>
#include <stdexcept>

#include "TestHome.h"
#include "TestPki.h"
#include "samplepki/Media.h"

using namespace samplepki;
using qgtk::Code;
namespace fs = std::filesystem;

namespace {

/** The roots that the shipped configuration names. */
constexpr const char* rootSubject =
    "cn=Sample RootCA 1,ou=Sample Certification Authority Central,o=KISA,c=KR";
constexpr const char* governmentSubject = "cn=Sample GPKIRootCA 1,ou=GPKI,o=Government of Korea,c=KR";

constexpr const char* certificates = "cACertificate;binary";
constexpr const char* lists = "certificateRevocationList;binary";
constexpr const char* authorityLists = "authorityRevocationList;binary";

/** Serial number of what is revoked. */
constexpr const char* revokedSerial = "0bad";

void replaceOnce(std::string& text, const std::string& from, const std::string& to)
{
    const std::size_t place = text.find(from);
    if (place == std::string::npos)
        throw std::runtime_error("the shipped configuration lacks " + from);
    text.replace(place, from.size(), to);
}

std::string entryName(const Authority& authority)
{
    return nameText(authority.subject());
}

Name authorityName(const std::string& commonName)
{
    return nameFromText("cn=" + commonName + ",ou=AccreditedCA,o=Sample,c=KR");
}

} // namespace

Scenes::Scenes(const std::string& language)
    : m_language(language), m_root(Authority::root(nameFromText(rootSubject), testKey(0))),
      m_governmentRoot(Authority::root(nameFromText(governmentSubject), testKey(1)))
{
    TestHome::reset();
    addGoodAndRevoked();
    addOutdated();
    addBadLists();
    addUnreachable();
    addRoots();
    addLongPath();
    addNamesakes();
    addLoop();
    m_server = std::make_unique<DirectoryServer>(m_entries, m_port);
    writeWorkDirectory();
}

std::string Scenes::textOf(const Scene& scene) const
{
    const auto language = m_language == "ENG" ? qgtk::Language::English : qgtk::Language::Korean;
    return "<wrenlib>" + convertText(textOfCode(scene.code, language), "UTF-8", "CP949") + " (" +
           std::to_string(static_cast<int>(scene.code)) + "): cn=" + scene.blamed + ",";
}

/** An authority whose certificate names the issuer's entry for the list of authorities. */
Authority Scenes::authorityBelow(Authority& issuer, const std::string& commonName, unsigned key)
{
    Request request{.subject = authorityName(commonName), .key = testKey(key)};
    request.crlPoints = {DirectoryServer::urlAt(m_port) + "/" + entryName(issuer) +
                         "?authorityRevocationList"};
    return issuer.intermediate(request);
}

void Scenes::publish(const Authority& authority, const std::vector<Bytes>& own)
{
    Entry entry{entryName(authority), {{certificates, authority.certificate()}}};
    for (const Bytes& list : own) {
        entry.values.emplace_back(lists, list);
        entry.values.emplace_back(authorityLists, list);
    }
    m_entries.push_back(entry);
}

void Scenes::publishWithList(const Authority& authority, const ListRequest& list)
{
    publish(authority, {authority.revocationList(list)});
}

/** A holder's certificate names the issuer's entry, unless it is changed. */
void Scenes::addHolder(Authority& issuer, const Scene& scene, const std::function<void(Request&)>& change)
{
    Request request{.subject = nameFromText("cn=" + scene.holder + ",ou=personal4IB,o=Sample,c=kr"),
                    .key = testKey(7)};
    request.crlPoints = {DirectoryServer::urlAt(m_port) + "/" + entryName(issuer) +
                         "?certificateRevocationList"};
    change(request);
    writeNpkiHolder(TestHome::path(), "yessign", scene.holder,
                    {filePair(issuer.issue(request), request.key, "password1!")});
    m_scenes.push_back(scene);
}

void Scenes::addGoodAndRevoked()
{
    publishWithList(m_root, {.serials = {revokedSerial}});
    publishWithList(m_governmentRoot);
    Authority ca = authorityBelow(m_root, "Good CA", 2);
    publishWithList(ca, {.serials = {revokedSerial}});
    addHolder(ca, {"good", Code::Ok, ""});
    addHolder(ca, {"revoked", Code::CertRevoked, "revoked"},
              [](Request& request) { request.serial = revokedSerial; });
    Authority government = authorityBelow(m_governmentRoot, "Government CA", 3);
    publishWithList(government);
    addHolder(government, {"official", Code::Ok, ""});
    Request below{.subject = authorityName("Revoked CA"), .key = testKey(3), .serial = revokedSerial};
    below.crlPoints = {DirectoryServer::urlAt(m_port) + "/" + rootSubject};
    Authority revoked = m_root.intermediate(below);
    publishWithList(revoked);
    addHolder(revoked, {"of revoked CA", Code::CertRevoked, "Revoked CA"});
}

void Scenes::addOutdated()
{
    Authority ca = authorityBelow(m_root, "Date CA", 2);
    publishWithList(ca);
    addHolder(ca, {"expired", Code::CertExpired, "expired"},
              [](Request& request) { request.validity = Validity::days(-30, -1); });
    addHolder(ca, {"early", Code::CertNotYetValid, "early"},
              [](Request& request) { request.validity = Validity::days(1, 30); });
    Authority impostor = Authority::root(authorityName("Date CA"), testKey(3));
    addHolder(impostor, {"forged", Code::CertSignature, "forged"},
              [](Request& request) { request.keyIdentifiers = false; });
}

void Scenes::addBadLists()
{
    Authority late = authorityBelow(m_root, "Late CA", 2);
    publishWithList(late, {.validity = Validity::days(-9, -1)});
    addHolder(late, {"list expired", Code::CrlExpired, "list expired"});
    Authority forged = authorityBelow(m_root, "Forged CA", 2);
    publish(forged, {Authority::root(authorityName("Forged CA"), testKey(3)).revocationList()});
    addHolder(forged, {"list forged", Code::CrlSignature, "list forged"});
    Authority silent = authorityBelow(m_root, "Listless CA", 2);
    publish(silent, {});
    addHolder(silent, {"list missing", Code::EntryMissing, "list missing"});
}

void Scenes::addUnreachable()
{
    Authority ca = authorityBelow(m_root, "Far CA", 2);
    publishWithList(ca);
    addHolder(ca, {"no server", Code::ServerUnreachable, "no server"}, [](Request& request) {
        request.crlPoints = {DirectoryServer::urlAt(freePort()) + "/cn=x,c=KR"};
    });
    addHolder(ca, {"stalling server", Code::ServerTimeout, "stalling server"},
              [this](Request& request) { request.crlPoints = {m_silent.url("ldap") + "/cn=x,c=KR"}; });
    addHolder(ca, {"refused address", Code::UrlRefused, "refused address"},
              [](Request& request) { request.crlPoints = {"file:///etc/passwd"}; });
}

/** Paths that end before a configured root, and at a root that is not configured. */
void Scenes::addRoots()
{
    Authority missing = Authority::root(authorityName("Absent RootCA"), testKey(4));
    Authority belowMissing = authorityBelow(missing, "Orphan CA", 2);
    publishWithList(belowMissing);
    addHolder(belowMissing, {"root missing", Code::IssuerMissing, "Orphan CA"});
    Authority untrusted = Authority::root(authorityName("Other RootCA"), testKey(5));
    publishWithList(untrusted);
    Authority belowUntrusted = authorityBelow(untrusted, "Other CA", 2);
    publishWithList(belowUntrusted);
    addHolder(belowUntrusted, {"root not trusted", Code::RootNotTrusted, "Other RootCA"});
    Authority absent = authorityBelow(m_root, "Absent CA", 2);
    addHolder(absent, {"intermediate missing", Code::IssuerMissing, "intermediate missing"});
}

void Scenes::addLongPath()
{
    std::vector<Authority> path{m_root};
    for (unsigned i = 1; i <= 4; ++i) {
        path.push_back(authorityBelow(path.back(), "Path CA " + std::to_string(i), 2 + i % 2));
        publishWithList(path.back());
    }
    addHolder(path.back(), {"path of six", Code::Ok, ""});
}

/** Two authorities of one name share the entry; only their keys tell them apart. */
void Scenes::addNamesakes()
{
    Authority one = authorityBelow(m_root, "Twin CA", 2);
    Authority other = authorityBelow(m_root, "Twin CA", 3);
    m_entries.push_back({entryName(one),
                         {{certificates, one.certificate()},
                          {certificates, other.certificate()},
                          {lists, one.revocationList()},
                          {lists, other.revocationList()}}});
    addHolder(one, {"first twin", Code::Ok, ""}, [](Request& request) { request.keyIdentifiers = false; });
    addHolder(other, {"second twin", Code::Ok, ""}, [](Request& request) { request.keyIdentifiers = false; });
}

/** Two authorities certify each other, and nobody else does. */
void Scenes::addLoop()
{
    const Name a = authorityName("Loop A");
    const Name b = authorityName("Loop B");
    Authority first = Authority::root(a, testKey(2));
    Authority second = Authority::root(b, testKey(3));
    Request request{.subject = a, .key = testKey(2)};
    request.keyIdentifiers = false;
    publishWithList(second.intermediate(request));
    request.subject = b;
    request.key = testKey(3);
    publishWithList(first.intermediate(request));
    addHolder(first, {"loop", Code::IssuerMissing, "Loop B"},
              [](Request& holder) { holder.keyIdentifiers = false; });
}

/** The shipped work directory, its files linked but for the toolkits' configuration. */
void Scenes::writeWorkDirectory()
{
    const fs::path work = TestHome::scratch("scenes") / "work";
    fs::create_directory(work);
    for (const auto& entry : fs::directory_iterator(QUILLGATE_WORKDIR))
        fs::create_symlink(entry.path(), work / entry.path().filename());
    for (const char* file : {"ZRCToolkitV30.conf", "gpkiapi.conf"}) {
        std::string text = readFile(work / file);
        for (int entry = 0; entry < 2; ++entry)
            replaceOnce(text, "ldap://localhost:389", m_server->url());
        replaceOnce(text, "LANGUAGE=KOR", "LANGUAGE=" + m_language);
        replaceOnce(text, "TOTAL_TIMEOUT=15", "TOTAL_TIMEOUT=3");
        fs::remove(work / file);
        writeFile(work / file, text);
    }
    if (runProgram({"sh", QUILLGATE_DATA "/link-configuration.sh", work.string()}) != 0)
        throw std::runtime_error("no links to the configuration");
    m_workDirectory = work.string();
}
