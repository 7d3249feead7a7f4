#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "samplepki/Extensions.h"
#include "samplepki/KeyPair.h"
#include "samplepki/Name.h"

namespace samplepki {

/** Start and end of a certificate's validity, seconds since 1970. */
struct Validity
{
    std::time_t notBefore;
    std::time_t notAfter;

    /** From and until so many days from now; negative days lie in the past. */
    static Validity days(int from, int until);
};

/** What a certificate is to hold. Only subject and key must be given. */
struct Request
{
    Name subject;
    KeyPair key;
    Validity validity = Validity::days(-30, 335);
    std::string serial = {};        /**< hexadecimal; empty: the issuer's next number */
    std::string digest = "SHA256";  /**< hash of the signature: "SHA1", "SHA256", "SHA512" */
    unsigned keyUsage = SigningUse; /**< KeyUsage bits; 0 leaves the extension out */
    std::vector<Policy> policies = {};
    std::vector<std::string> crlPoints = {}; /**< addresses, ldap:// or http:// */
    std::string ocspUrl = {};
    std::string issuersUrl = {};
    std::string rfc822Name = {};
    std::optional<Identity> identity =
        {}; /**< identity value in the subject alternative name; the key needs its random */
    bool keyIdentifiers = true;         /**< authority's and subject's key identifiers */
    std::vector<Extension> extras = {}; /**< written behind the others as they stand */
};

/** What a revocation list is to hold. */
struct ListRequest
{
    std::vector<std::string> serials = {};      /**< hexadecimal numbers of the revoked certificates */
    Validity validity = Validity::days(-1, 30); /**< this and next update */
    int reason = 1;                             /**< of every entry: 1 is a key that became known */
};

/**
 * A certificate authority. It issues what it is asked for, sensible or not; nothing is kept but the next
 * serial number. All functions throw std::invalid_argument for a request that can't be encoded and
 * std::runtime_error when OpenSSL fails.
 */
class Authority
{
public:
    /** A self-signed authority, valid from ten years ago for twenty years. */
    static Authority root(const Name& subject, const KeyPair& key);

    /** An authority below this one, with the same validity. */
    Authority intermediate(const Name& subject, const KeyPair& key);

    /** A certificate with 'key' = authority rights, as 'request' says, which is then an authority itself. */
    Authority intermediate(Request request);

    /** Issues a certificate; the result is its DER. */
    Bytes issue(const Request& request);

    /** A revocation list of this authority's, signed by its key; the result is its DER. */
    Bytes revocationList(const ListRequest& request = {}) const;

    /** The authority's own certificate in DER. */
    const Bytes& certificate() const { return m_certificate; }

    const Name& subject() const { return m_subject; }
    const KeyPair& key() const { return m_key; }

private:
    Authority(const Name& subject, const KeyPair& key);
    std::vector<Extension> extensions(const Request& request) const;
    Bytes nextSerial(const Request& request);

    Name m_subject;
    KeyPair m_key;
    Bytes m_issuer; /**< DER of the name of this authority's own issuer */
    Bytes m_serial; /**< big-endian serial number of its own certificate */
    Bytes m_certificate;
    std::uint64_t m_nextSerial = 0x10000001;
};

} // namespace samplepki
