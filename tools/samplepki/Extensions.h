#pragma once

#include <string>
#include <vector>

#include "samplepki/KeyPair.h"
#include "samplepki/Name.h"

namespace samplepki {

/** One extension as it goes into the certificate: dotted OID or OpenSSL's name, and the DER of its value. */
struct Extension
{
    std::string oid;
    Bytes value;
    bool critical = false;
};

/** One certificate policy; empty texts leave their qualifier out. Both texts are UTF-8. */
struct Policy
{
    std::string oid;
    std::string notice =
        {}; /**< explicitText of the user notice, a BMPString, written before the statement's address */
    std::string cps = {}; /**< address of the practice statement */
};

/** What the identity value of a certificate is made from. */
struct Identity
{
    std::string realName;        /**< UTF-8 */
    std::string number;          /**< identity number, digits only */
    std::string hash = "SHA256"; /**< hash of the value: SHA256 or SHA1 */
};

/** Bits of the key usage, to be combined; the value of each is its position in the extension. */
enum KeyUsage : unsigned
{
    DigitalSignature = 1U << 0,
    NonRepudiation = 1U << 1,
    KeyEncipherment = 1U << 2,
    DataEncipherment = 1U << 3,
    KeyAgreement = 1U << 4,
    KeyCertSign = 1U << 5,
    CrlSign = 1U << 6,
    EncipherOnly = 1U << 7,
    DecipherOnly = 1U << 8,
    SigningUse = DigitalSignature | NonRepudiation,
    EnvelopeUse = KeyEncipherment | DataEncipherment,
    AuthorityUse = KeyCertSign | CrlSign,
};

Extension keyUsageExtension(unsigned usage);
Extension basicConstraintsExtension();
Extension policiesExtension(const std::vector<Policy>& policies);
Extension crlPointsExtension(const std::vector<std::string>& urls);

/** Authority information access; an empty address is left out. */
Extension infoAccessExtension(const std::string& ocsp, const std::string& issuers);

Extension subjectKeyExtension(const Bytes& identifier);

/** Key identifier, issuer and serial number of the certificate that issues. */
Extension authorityKeyExtension(const Bytes& identifier, const Bytes& issuerName, const Bytes& serial);

/** An rfc822Name, when there is one, and behind it the identity data, when there are. 'random' is the key's.
 */
Extension subjectAltNameExtension(const std::string& rfc822Name, const Identity* identity,
                                  const Bytes& random);

/** The identity value: the hash of the hash of the number and the random value, raw bytes. */
Bytes identityValue(const std::string& number, const Bytes& random, const std::string& hash = "SHA256");

/** SEQUENCE OF Extension in DER. */
Bytes encodeExtensions(const std::vector<Extension>& extensions);

} // namespace samplepki
