#include "toolkit/core/MozillaPbe.h"

#include <nettle/md2.h>

#include "toolkit/core/AlgorithmParameters.h"
#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

constexpr std::size_t desKeyLength = 8;
constexpr std::size_t desIvLength = 8;

/** Digests the digest of some bytes again and again. */
template <typename Digest>
SecretBytes repeated(SecretBytes bytes, int iterations, Digest&& digest)
{
    for (int i = 0; i < iterations; ++i)
        bytes = digest(bytes);
    return bytes;
}

SecretBytes md2(ByteView bytes)
{
    SecretBytes digest(MD2_DIGEST_SIZE);
    md2_ctx run;
    md2_init(&run);
    md2_update(&run, bytes.size(), bytes.data());
    md2_digest(&run, digest.size(), digest.data());
    OPENSSL_cleanse(&run, sizeof run);
    return digest;
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
        digest = repeated(std::move(source), iterations, md2);
    else {
        const DigestHandle sha1 = crypto.digest("SHA1");
        digest = repeated(std::move(source), iterations, [&](ByteView bytes) {
            SecretBytes result(static_cast<std::size_t>(EVP_MD_get_size(sha1.get())));
            require(EVP_Digest(bytes.data(), bytes.size(), result.data(), nullptr, sha1.get(), nullptr) == 1,
                    Code::CryptoUnavailable);
            return result;
        });
    }
    return {crypto.cipher("DES-CBC"), SecretBytes(digest.begin(), digest.begin() + desKeyLength),
            SecretBytes(digest.end() - desIvLength, digest.end())};
}

} // namespace qgtk
