#include "toolkit/core/PrivateKey.h"

#include "toolkit/core/CipherRun.h"

namespace qgtk {

namespace {

/** Encrypted keys are a few kilobytes; the lengths below are handed on as int. */
constexpr std::size_t maxKeyLength = 1 << 20;

/** Wipes an attribute value that is a bit string, as the random value is. */
void wipeBits(ASN1_TYPE* value)
{
    if (value && value->type == V_ASN1_BIT_STRING)
        OPENSSL_cleanse(value->value.bit_string->data,
                        static_cast<std::size_t>(value->value.bit_string->length));
}

/** Decodes an EncryptedPrivateKeyInfo. Throws KeyDamaged. */
EncryptedKeyHandle decodeSealedKey(ByteView encrypted)
{
    require(encrypted.size() <= maxKeyLength, Code::KeyDamaged);
    EncryptedKeyHandle sealed = decodeDer<EncryptedKeyHandle>(d2i_X509_SIG, encrypted);
    require(sealed != nullptr, Code::KeyDamaged);
    return sealed;
}

} // namespace

void wipeAttributes(const STACK_OF(X509_ATTRIBUTE) * attributes)
{
    for (int i = 0; i < sk_X509_ATTRIBUTE_num(attributes); ++i) {
        X509_ATTRIBUTE* attribute = sk_X509_ATTRIBUTE_value(attributes, i);
        for (int j = 0; j < X509_ATTRIBUTE_count(attribute); ++j)
            wipeBits(X509_ATTRIBUTE_get0_type(attribute, j));
    }
}

void freePlainKey(PKCS8_PRIV_KEY_INFO* key)
{
    wipeAttributes(PKCS8_pkey_get0_attrs(key));
    PKCS8_PRIV_KEY_INFO_free(key);
}

bool isPlainKey(ByteView bytes)
{
    return decodeDer<PlainKeyHandle>(d2i_PKCS8_PRIV_KEY_INFO, bytes) != nullptr;
}

PlainKeyHandle decodePlainKey(ByteView plain)
{
    PlainKeyHandle key = decodeDer<PlainKeyHandle>(d2i_PKCS8_PRIV_KEY_INFO, plain);
    require(key != nullptr, Code::KeyNotPlain);
    return key;
}

KeyCipher cipherOfKey(ByteView encrypted)
{
    const EncryptedKeyHandle sealed = decodeSealedKey(encrypted);
    const X509_ALGOR* algorithm = nullptr;
    X509_SIG_get0(sealed.get(), &algorithm, nullptr);
    return cipherOfAlgorithm(algorithm);
}

SecretBytes decryptKey(const Crypto& crypto, ByteView encrypted, std::string_view password, int maxIterations)
{
    const EncryptedKeyHandle sealed = decodeSealedKey(encrypted);
    const X509_ALGOR* algorithm = nullptr;
    const ASN1_OCTET_STRING* content = nullptr;
    X509_SIG_get0(sealed.get(), &algorithm, &content);
    const ByteView cipherText = contentOf(content);
    require(!cipherText.empty(), Code::KeyDamaged);
    const CipherSetup setup = setupFromAlgorithm(crypto, algorithm, password, maxIterations);
    const auto block = static_cast<std::size_t>(EVP_CIPHER_get_block_size(setup.cipher.get()));
    require(cipherText.size() % block == 0, Code::KeyDamaged);
    SecretBytes plain;
    // A wrong password passes the padding check once in 256 times, and then fails as a structure.
    require(runCipher(startCipher(setup, false).get(), cipherText, plain) && isPlainKey(plain),
            Code::WrongPassword);
    return plain;
}

Bytes encryptKey(const Crypto& crypto, ByteView plain, std::string_view password,
                 const KeyProtection& protection)
{
    require(plain.size() <= maxKeyLength && isPlainKey(plain), Code::KeyNotPlain);
    const AlgorithmHandle algorithm = makeAlgorithm(crypto, protection);
    const CipherSetup setup = setupFromAlgorithm(crypto, algorithm.get(), password, protection.iterations);
    Bytes cipherText;
    require(runCipher(startCipher(setup, true).get(), plain, cipherText), Code::CryptoUnavailable);
    return encodeDer<Bytes>(i2d_X509_SIG, makeSealedKey(algorithm.get(), cipherText).get());
}

EncryptedKeyHandle makeSealedKey(const X509_ALGOR* algorithm, ByteView cipherText)
{
    EncryptedKeyHandle sealed = owned<EncryptedKeyHandle>(X509_SIG_new());
    X509_ALGOR* target = nullptr;
    ASN1_OCTET_STRING* content = nullptr;
    X509_SIG_getm(sealed.get(), &target, &content);
    const bool stored =
        X509_ALGOR_copy(target, algorithm) &&
        ASN1_OCTET_STRING_set(content, cipherText.data(), static_cast<int>(cipherText.size()));
    if (!stored)
        throw std::bad_alloc();
    return sealed;
}

} // namespace qgtk
