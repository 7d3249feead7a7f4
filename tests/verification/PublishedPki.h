#pragma once

#include <optional>

#include "Servers.h"
#include "VerificationTest.h"

/** A root and an authority whose lists are files of an HTTP server, with contexts that give up after 2 s. */
class PublishedPki : public VerificationTest
{
protected:
    void SetUp() override;

    /** Files of the server. */
    static constexpr const char* caList = "ca.crl";
    static constexpr const char* rootList = "root.crl";

    void publish(const std::string& file, const samplepki::Bytes& bytes)
    {
        writeFile(directory + "/" + file, bytes);
    }

    /** Trusts the root and looks at lists unless told otherwise. */
    void prepare(Source source = Source::Crl, bool wholeChain = true);

    /** The authority's certificate with an address for the root's list. */
    samplepki::Bytes authority();

    /** A leaf of that authority with an address for its list, unless the request is another's. */
    samplepki::Bytes leaf(const std::string& listUrl, const std::string& ocspUrl = {});

    /** The "openssl ca" index of one certificate: V good, R revoked. */
    static std::string indexOf(const std::string& serial, bool revoked);

    TestPki pki;
    const std::string directory = TestHome::scratch("lists").string();
    FileServer files{directory};
    std::optional<samplepki::Authority> m_ca;
};
