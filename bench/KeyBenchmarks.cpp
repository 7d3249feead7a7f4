// Opening a key: what the user waits for after the password.

#include "Cryptography.h"
#include "Session.h"

#include <TestHome.h>
#include <benchmark/benchmark.h>
#include <memory>
#include <openssl/evp.h>
#include <quillgate/certlist.h>
#include <samplepki/Authority.h>
#include <samplepki/Media.h>

namespace {

using samplepki::KeyCipher;

samplepki::Bytes keyFile(KeyCipher cipher)
{
    const samplepki::KeyPair& key = samplepki::KeyPool::key();
    return samplepki::encryptKeyFile(key.privateKeyInfo(), password, {cipher, "SHA1", rounds});
}

void writeHolder(const std::filesystem::path& root, KeyCipher cipher)
{
    using namespace samplepki;
    Authority authority =
        Authority::root(nameFromText("cn=Root,o=yessign,c=kr"), KeyPool::key(KeyKind::Rsa2048, 1));
    const Bytes certificate = authority.issue({nameFromText("cn=holder,o=yessign,c=kr"), KeyPool::key()});
    writeNpkiHolder(root, "yessign", "holder", {{certificate, keyFile(cipher)}});
}

void decryptWithLibrary(benchmark::State& state, KeyCipher cipher)
{
    useHome("key-" + std::to_string(static_cast<int>(cipher)),
            [cipher](const std::filesystem::path& root) { writeHolder(root, cipher); });
    const Session session(workDirectory("work"));
    session.load(1);
    std::string text = password;
    for (auto _ : state) {
        char* key = nullptr;
        char* kmKey = nullptr;
        int length = 0;
        int kmLength = 0;
        if (CLP_DecryptPriKeyData(session.handle(), 0, text.data(), &key, &length, &kmKey, &kmLength) != 0)
            state.SkipWithError("the key does not open");
        CLP_MemFree(session.handle(), reinterpret_cast<void**>(&key));
    }
}

/** OpenSSL with SEED in it, as a program of its own would load it. */
class BareSeed : public BareOpenSsl
{
public:
    BareSeed()
        : legacy(OSSL_PROVIDER_load(context, "legacy")), seed(EVP_CIPHER_fetch(context, "SEED-CBC", nullptr)),
          sha1(EVP_MD_fetch(context, "SHA1", nullptr))
    {}
    ~BareSeed()
    {
        EVP_MD_free(sha1);
        EVP_CIPHER_free(seed);
        OSSL_PROVIDER_unload(legacy);
    }

    /** The block cipher over a buffer of a key file's size; what is decrypted makes no difference to the
     * cost. */
    void decrypt(const unsigned char* key, const unsigned char* vector,
                 const samplepki::Bytes& cipherText) const
    {
        unsigned char plain[8192];
        int length = 0;
        EVP_CIPHER_CTX* cipher = EVP_CIPHER_CTX_new();
        EVP_DecryptInit_ex2(cipher, seed, key, vector, nullptr);
        EVP_DecryptUpdate(cipher, plain, &length, reinterpret_cast<const unsigned char*>(cipherText.data()),
                          static_cast<int>(cipherText.size()));
        benchmark::DoNotOptimize(plain);
        EVP_CIPHER_CTX_free(cipher);
    }

    OSSL_PROVIDER* legacy;
    EVP_CIPHER* seed;
    EVP_MD* sha1;
};

constexpr unsigned char salt[8] = {1, 2, 3, 4, 5, 6, 7, 8};

void FloorDecryptPbes2(benchmark::State& state)
{
    const BareSeed bare;
    const samplepki::Bytes file = keyFile(KeyCipher::Seed);
    for (auto _ : state) {
        unsigned char derived[16];
        PKCS5_PBKDF2_HMAC(password, sizeof password - 1, salt, sizeof salt, rounds, bare.sha1, sizeof derived,
                          derived);
        bare.decrypt(derived, salt, file);
    }
}

/** PBKDF1: SHA-1 over password and salt, and again over the digest; the vector is a digest of its tail. */
void FloorDecryptPbkdf1(benchmark::State& state)
{
    const BareSeed bare;
    const samplepki::Bytes file = keyFile(KeyCipher::SeedPbkdf1);
    for (auto _ : state) {
        unsigned char derived[20];
        unsigned char vector[20];
        EVP_MD_CTX* digest = EVP_MD_CTX_new();
        EVP_DigestInit_ex2(digest, bare.sha1, nullptr);
        EVP_DigestUpdate(digest, password, sizeof password - 1);
        EVP_DigestUpdate(digest, salt, sizeof salt);
        EVP_DigestFinal_ex(digest, derived, nullptr);
        for (int round = 1; round < rounds; ++round) {
            EVP_DigestInit_ex2(digest, bare.sha1, nullptr);
            EVP_DigestUpdate(digest, derived, sizeof derived);
            EVP_DigestFinal_ex(digest, derived, nullptr);
        }
        EVP_DigestInit_ex2(digest, bare.sha1, nullptr);
        EVP_DigestUpdate(digest, derived + 16, 4);
        EVP_DigestFinal_ex(digest, vector, nullptr);
        EVP_MD_CTX_free(digest);
        bare.decrypt(derived, vector, file);
    }
}

void DecryptPbes2(benchmark::State& state)
{
    decryptWithLibrary(state, KeyCipher::Seed);
}
void DecryptPbkdf1(benchmark::State& state)
{
    decryptWithLibrary(state, KeyCipher::SeedPbkdf1);
}

BENCHMARK(FloorDecryptPbes2)->Unit(benchmark::kMicrosecond);
BENCHMARK(DecryptPbes2)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorDecryptPbkdf1)->Unit(benchmark::kMicrosecond);
BENCHMARK(DecryptPbkdf1)->Unit(benchmark::kMicrosecond);

} // namespace
