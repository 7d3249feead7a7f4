#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Servers.h"
#include "samplepki/Authority.h"
#include "toolkit/core/Errors.h"

/** A holder in the home directory, and what the verification of the certificate has to answer. */
struct Scene
{
    std::string holder; /**< common name */
    qgtk::Code code;    /**< of the open toolkit */
    std::string blamed; /**< common name of the certificate that the text names; empty for a good one */
};

/**
 * What the list service meets in the field, at once: a home directory of holders, each with a fate of his
 * own, a directory server with the authorities, their lists and the lists of authorities, and a work
 * directory like the shipped one, but with that server's address and short time limits.
 *
 * The service's own arguments leave two out: it never asks a status responder, and it wants no policy.
 */
class Scenes
{
public:
    /** Language of the toolkit's texts: "KOR" or "ENG". */
    explicit Scenes(const std::string& language = "KOR");

    const std::vector<Scene>& all() const { return m_scenes; }
    const std::string& workDirectory() const { return m_workDirectory; }

    /** What the toolkit says of a scene, marker and all, EUC-KR, up to the names that it names. */
    std::string textOf(const Scene& scene) const;

private:
    samplepki::Authority authorityBelow(samplepki::Authority& issuer, const std::string& commonName,
                                        unsigned key);
    void publish(const samplepki::Authority& authority, const std::vector<samplepki::Bytes>& lists);
    void publishWithList(const samplepki::Authority& authority, const samplepki::ListRequest& list = {});
    void addHolder(
        samplepki::Authority& issuer, const Scene& scene,
        const std::function<void(samplepki::Request&)>& change = [](samplepki::Request&) {});
    void addGoodAndRevoked();
    void addOutdated();
    void addBadLists();
    void addUnreachable();
    void addRoots();
    void addLongPath();
    void addNamesakes();
    void addLoop();
    void writeWorkDirectory();

    std::string m_language;
    int m_port = freePort();
    RawServer m_silent{[](int) {
    }};
    samplepki::Authority m_root;
    samplepki::Authority m_governmentRoot;
    std::vector<Entry> m_entries;
    std::vector<Scene> m_scenes;
    std::string m_workDirectory;
    std::unique_ptr<DirectoryServer> m_server;
};
