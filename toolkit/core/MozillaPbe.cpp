#include "toolkit/core/MozillaPbe.h"

#include <nettle/md2.h>
#include <openssl/sha.h>

#include "toolkit/core/AlgorithmParameters.h"
#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

constexpr std::size_t desKeyLength = 8;
constexpr std::size_t desIvLength = 8;

/** Digests some bytes, and the digest again and again, in one place: there are hundreds of thousands of
 * rounds. */
template <typename Digest>
SecretBytes repeated(ByteView bytes, std::size_t length, int iterations, Digest&& digest)
{
    SecretBytes result(length);
    for (int i = 0; i < iterations; ++i)
        digest(i == 0 ? bytes : ByteView(result), result.data());
    return result;
}

void md2(ByteView bytes, std::uint8_t* digest)
{
    md2_ctx run;
    md2_init(&run);
    md2_update(&run, bytes.size(), bytes.data());
    md2_digest(&run, MD2_DIGEST_SIZE, digest);
    OPENSSL_cleanse(&run, sizeof run);
}

int nidOf(const X509_ALGOR* algorithm)
{
    return OBJ_obj2nid(objectOf(algorithm));
}

} // namespace

bool hasMozillaForm(const X509_ALGOR* algorithm)
{
    return isMozillaOnly(algorithm) || nidOf(algorithm) == NID_pbeWithSHA1AndDES_CBC;
}

bool isMozillaOnly(const X509_ALGOR* algorithm)
{
    return nidOf(algorithm) == NID_pbeWithMD2AndDES_CBC;
}

CipherSetup mozillaSetup(const Crypto& crypto, const X509_ALGOR* algorithm, ByteView widePassword,
                         ByteView salt, int iterations)
{
    SecretBytes source;
    source.reserve(widePassword.size() + salt.size());
    source.assign(widePassword.begin(), widePassword.end());
    source.insert(source.end(), salt.begin(), salt.end());
    SecretBytes digest;
    if (isMozillaOnly(algorithm))
        digest = repeated(source, MD2_DIGEST_SIZE, iterations, md2);
    else {
        const DigestHandle sha1 = crypto.digest("SHA1");
        digest = repeated(source, SHA_DIGEST_LENGTH, iterations, [&](ByteView bytes, std::uint8_t* result) {
            require(EVP_Digest(bytes.data(), bytes.size(), result, nullptr, sha1.get(), nullptr) == 1,
                    Code::CryptoUnavailable);
        });
    }
    return {crypto.cipher("DES-CBC"), SecretBytes(digest.begin(), digest.begin() + desKeyLength),
            SecretBytes(digest.end() - desIvLength, digest.end())};
}

} // namespace qgtk
