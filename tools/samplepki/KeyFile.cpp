#include "samplepki/KeyFile.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include <openssl/evp.h>
#include <openssl/provider.h>
#include <openssl/rand.h>
#include <openssl/sha.h>

namespace samplepki {

namespace {

constexpr std::size_t saltSize = 8;
constexpr const char* fixedVector = "0123456789012345";

struct Cipher
{
    const char* name; /**< OpenSSL's */
    const char* oid;
};

/** OpenSSL's name and the OID in the file, in the order of KeyCipher. */
constexpr Cipher ciphers[] = {
    {"SEED-CBC", "1.2.410.200004.1.4"},         {"ARIA-128-CBC", "1.2.410.200046.1.1.2"},
    {"ARIA-192-CBC", "1.2.410.200046.1.1.7"},   {"ARIA-256-CBC", "1.2.410.200046.1.1.12"},
    {"AES-128-CBC", "2.16.840.1.101.3.4.1.2"},  {"AES-192-CBC", "2.16.840.1.101.3.4.1.22"},
    {"AES-256-CBC", "2.16.840.1.101.3.4.1.42"}, {"DES-EDE3-CBC", "1.2.840.113549.3.7"},
    {"SEED-CBC", "1.2.410.200004.1.15"},        {"SEED-CBC", "1.2.410.200004.1.4"},
};

void require(bool done)
{
    if (!done)
        throw std::runtime_error("a key file can't be encrypted");
}

unsigned char* writable(Bytes& bytes)
{
    return reinterpret_cast<unsigned char*>(bytes.data());
}

const unsigned char* readable(const Bytes& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

/** A context of its own that has SEED; the process's own OpenSSL stays without it. */
OSSL_LIB_CTX* library()
{
    struct Context
    {
        OSSL_LIB_CTX* library = OSSL_LIB_CTX_new();
        OSSL_PROVIDER* base = OSSL_PROVIDER_load(library, "default");
        OSSL_PROVIDER* legacy = OSSL_PROVIDER_load(library, "legacy");
        ~Context()
        {
            OSSL_PROVIDER_unload(legacy);
            OSSL_PROVIDER_unload(base);
            OSSL_LIB_CTX_free(library);
        }
    };
    static const Context context;
    return context.library;
}

std::unique_ptr<EVP_CIPHER, decltype(&EVP_CIPHER_free)> fetchCipher(const char* name)
{
    std::unique_ptr<EVP_CIPHER, decltype(&EVP_CIPHER_free)> cipher(EVP_CIPHER_fetch(library(), name, nullptr),
                                                                   &EVP_CIPHER_free);
    require(cipher != nullptr);
    return cipher;
}

Bytes randomBytes(std::size_t size)
{
    Bytes bytes(size, '\0');
    require(RAND_bytes(writable(bytes), static_cast<int>(size)) == 1);
    return bytes;
}

Bytes sha1(const Bytes& data)
{
    Bytes out(SHA_DIGEST_LENGTH, '\0');
    SHA1(readable(data), data.size(), writable(out));
    return out;
}

Bytes pbkdf1(const std::string& password, const Bytes& salt, unsigned iterations)
{
    Bytes derived = sha1(password + salt);
    for (unsigned round = 1; round < iterations; ++round)
        derived = sha1(derived);
    return derived;
}

Bytes pbkdf2(const std::string& password, const Bytes& salt, const KeyFileForm& form, int size)
{
    Bytes derived(static_cast<std::size_t>(size), '\0');
    require(PKCS5_PBKDF2_HMAC(password.data(), static_cast<int>(password.size()), readable(salt),
                              static_cast<int>(salt.size()), static_cast<int>(form.iterations),
                              EVP_get_digestbyname(form.hash.c_str()), size, writable(derived)) == 1);
    return derived;
}

Bytes encrypt(const EVP_CIPHER* cipher, const Bytes& key, const Bytes& vector, const Bytes& plain)
{
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                  &EVP_CIPHER_CTX_free);
    Bytes out(plain.size() + EVP_MAX_BLOCK_LENGTH, '\0');
    int length = 0;
    int last = 0;
    require(EVP_EncryptInit_ex2(context.get(), cipher, readable(key), readable(vector), nullptr) == 1);
    require(EVP_EncryptUpdate(context.get(), writable(out), &length, readable(plain),
                              static_cast<int>(plain.size())) == 1);
    require(EVP_EncryptFinal_ex(context.get(), writable(out) + length, &last) == 1);
    out.resize(static_cast<std::size_t>(length + last));
    return out;
}

Bytes keyFile(const char* oid, const Bytes& parameters, const Bytes& encrypted)
{
    return der::sequence(
        {der::sequence({der::oid(oid), parameters}), der::element(der::OctetString, encrypted)});
}

Bytes saltAndIterations(const Bytes& salt, unsigned iterations, const Bytes& prf = {})
{
    return der::sequence({der::element(der::OctetString, salt), der::integer(iterations), prf});
}

/** The two forms that are older than PBES2: key and vector out of one derived value, or the vector that is
 * always the same. */
Bytes encryptPbkdf1(const Bytes& plain, const std::string& password, const KeyFileForm& form,
                    const Cipher& cipher)
{
    const Bytes salt = randomBytes(saltSize);
    const Bytes derived = pbkdf1(password, salt, form.iterations);
    const Bytes vector =
        form.cipher == KeyCipher::SeedPbkdf1 ? sha1(derived.substr(16)).substr(0, 16) : Bytes(fixedVector);
    const Bytes encrypted = encrypt(fetchCipher(cipher.name).get(), derived.substr(0, 16), vector, plain);
    return keyFile(cipher.oid, saltAndIterations(salt, form.iterations), encrypted);
}

/** PBKDF2's default is HMAC with SHA-1 and is left out, as DER wants it. */
Bytes pseudoRandomFunction(const std::string& hash)
{
    return hash == "SHA1" ? Bytes()
                          : der::sequence({der::oid("hmacWith" + hash), der::element(der::Null, "")});
}

Bytes encryptPbes2(const Bytes& plain, const std::string& password, const KeyFileForm& form,
                   const Cipher& entry)
{
    const auto cipher = fetchCipher(entry.name);
    const Bytes salt = randomBytes(saltSize);
    const Bytes vector = randomBytes(static_cast<std::size_t>(EVP_CIPHER_get_iv_length(cipher.get())));
    const Bytes key = pbkdf2(password, salt, form, EVP_CIPHER_get_key_length(cipher.get()));
    const Bytes derivation = der::sequence(
        {der::oid("PBKDF2"), saltAndIterations(salt, form.iterations, pseudoRandomFunction(form.hash))});
    const Bytes scheme = der::sequence({der::oid(entry.oid), der::element(der::OctetString, vector)});
    return keyFile("PBES2", der::sequence({derivation, scheme}), encrypt(cipher.get(), key, vector, plain));
}

} // namespace

Bytes encryptKeyFile(const Bytes& privateKeyInfo, const std::string& password, const KeyFileForm& form)
{
    const Cipher& cipher = ciphers[static_cast<std::size_t>(form.cipher)];
    const bool old = form.cipher == KeyCipher::SeedPbkdf1 || form.cipher == KeyCipher::SeedFixedVector;
    return (old ? encryptPbkdf1 : encryptPbes2)(privateKeyInfo, password, form, cipher);
}

} // namespace samplepki
