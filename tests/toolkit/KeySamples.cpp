#include "KeySamples.h"

#include <openssl/rsa.h>
#include <stdexcept>

#include "toolkit/core/KeyRandom.h"

qgtk::Bytes fromHex(const std::string& text)
{
    qgtk::Bytes bytes;
    std::string digits;
    for (const char c : text)
        if (c != ' ' && c != '\n')
            digits += c;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    return bytes;
}

std::string toHex(qgtk::ByteView bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

const qgtk::Crypto& testCrypto()
{
    static const qgtk::Crypto crypto;
    return crypto;
}

const qgtk::SecretBytes& rsaKey()
{
    static const qgtk::SecretBytes key = [] {
        using Pkcs8 = qgtk::PlainKeyHandle;
        qgtk::KeyHandle made(EVP_PKEY_Q_keygen(testCrypto().context(), nullptr, "RSA", std::size_t{2048}));
        return qgtk::encodeDer<qgtk::SecretBytes>(i2d_PKCS8_PRIV_KEY_INFO,
                                                  qgtk::owned<Pkcs8>(EVP_PKEY2PKCS8(made.get())).get());
    }();
    return key;
}

const qgtk::SecretBytes& rsaKeyWithRandom()
{
    static const qgtk::SecretBytes key =
        qgtk::withKeyRandom(rsaKey(), fromHex("0102030405060708090a0b0c0d0e0f1011121300"));
    return key;
}
