#include "toolkit/core/RsaPair.h"

#include <algorithm>
#include <vector>

#include "toolkit/core/AlgorithmParameters.h"
#include "toolkit/core/DerElement.h"
#include "toolkit/core/PrivateKey.h"

namespace qgtk {

namespace {

constexpr std::size_t privateIntegers = 9; /**< of an RSAPrivateKey with two primes (RFC 8017, A.1.2) */

/** The content of the element of a kind that some bytes begin with, which are moved behind it. */
std::optional<ByteView> takeElement(ByteView& bytes, int tag)
{
    const std::optional<DerElement> element = firstElement(bytes);
    if (!element || element->tag != tag)
        return std::nullopt;
    bytes = bytes.subspan(element->whole.size());
    return element->content;
}

/** The integers of a SEQUENCE that holds nothing else; none when it does. */
std::vector<ByteView> integersOf(ByteView sequence)
{
    std::optional<ByteView> content = takeElement(sequence, V_ASN1_SEQUENCE);
    std::vector<ByteView> integers;
    while (content && !content->empty()) {
        const std::optional<ByteView> integer = takeElement(*content, V_ASN1_INTEGER);
        if (!integer)
            return {};
        integers.push_back(*integer);
    }
    return integers;
}

bool isRsa(const X509_ALGOR* algorithm)
{
    return OBJ_obj2nid(objectOf(algorithm)) == NID_rsaEncryption;
}

/** The octets of a key that says it is RSA's; empty for another. */
ByteView rsaKeyBytes(const PKCS8_PRIV_KEY_INFO* key)
{
    const unsigned char* bytes = nullptr;
    int length = 0;
    const X509_ALGOR* algorithm = nullptr;
    if (PKCS8_pkey_get0(nullptr, &bytes, &length, &algorithm, key) != 1 || !isRsa(algorithm))
        return {};
    return {bytes, static_cast<std::size_t>(length)};
}

/** Modulus and exponent of a certificate's key; none when it is not RSA's. */
std::vector<ByteView> publicIntegers(const Certificate& certificate)
{
    try {
        const PublicKeyParts& key = certificate.publicKey();
        return isRsa(key.algorithm.get()) ? integersOf(key.bits) : std::vector<ByteView>();
    } catch (const Failure&) {
        return {};
    }
}

} // namespace

std::optional<bool> rsaPairFits(const Certificate& certificate, ByteView plainKey)
{
    const PlainKeyHandle key = decodePlainKey(plainKey);
    const std::vector<ByteView> known = publicIntegers(certificate);
    const std::vector<ByteView> secret = integersOf(rsaKeyBytes(key.get()));
    if (known.size() != 2 || secret.size() != privateIntegers)
        return std::nullopt;
    return std::ranges::equal(known[0], secret[1]) && std::ranges::equal(known[1], secret[2]);
}

} // namespace qgtk
