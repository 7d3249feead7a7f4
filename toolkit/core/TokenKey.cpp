#include "toolkit/core/TokenKey.h"

#include <array>
#include <openssl/core_names.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

using NumberHandle = Handle<BIGNUM, BN_clear_free>;

/** A number of a key, as long as it must be; longer when a length is given. */
SecretBytes numberOf(const KeyHandle& pair, const char* name, std::size_t length = 0)
{
    BIGNUM* read = nullptr;
    const bool found = EVP_PKEY_get_bn_param(pair.get(), name, &read) == 1;
    const NumberHandle number(read);
    require(found, Code::KeyUnsuitable);
    SecretBytes bytes(std::max(length, static_cast<std::size_t>(BN_num_bytes(number.get()))));
    BN_bn2binpad(number.get(), bytes.data(), static_cast<int>(bytes.size()));
    return bytes;
}

/** The curve's identifier, DER. */
SecretBytes curveOf(const KeyHandle& pair)
{
    std::array<char, 80> name{};
    const bool named = EVP_PKEY_get_utf8_string_param(pair.get(), OSSL_PKEY_PARAM_GROUP_NAME, name.data(),
                                                      name.size(), nullptr);
    const ASN1_OBJECT* curve = named == 1 ? OBJ_nid2obj(OBJ_txt2nid(name.data())) : nullptr;
    require(curve && OBJ_length(curve) > 0, Code::KeyUnsuitable);
    return encodeDer<SecretBytes>(i2d_ASN1_OBJECT, curve);
}

/** The point, uncompressed, as an OCTET STRING. */
SecretBytes pointOf(const KeyHandle& pair)
{
    unsigned char* encoded = nullptr;
    const std::size_t length = EVP_PKEY_get1_encoded_public_key(pair.get(), &encoded);
    const std::shared_ptr<unsigned char> owner(encoded, [](unsigned char* bytes) { OPENSSL_free(bytes); });
    const StringHandle point = owned<StringHandle>(ASN1_OCTET_STRING_new());
    require(length > 0, Code::KeyUnsuitable);
    if (ASN1_OCTET_STRING_set(point.get(), encoded, static_cast<int>(length)) != 1)
        throw std::bad_alloc();
    return encodeDer<SecretBytes>(i2d_ASN1_OCTET_STRING, point.get());
}

} // namespace

TokenKey::TokenKey(const KeyHandle& pair)
{
    if (EVP_PKEY_is_a(pair.get(), "RSA") == 1)
        readRsa(pair);
    else if (EVP_PKEY_is_a(pair.get(), "EC") == 1)
        readCurve(pair);
    else
        throw Failure(Code::KeyUnsuitable);
}

void TokenKey::readRsa(const KeyHandle& pair)
{
    m_kind = CKK_RSA;
    m_public.push_back({CKA_MODULUS, numberOf(pair, OSSL_PKEY_PARAM_RSA_N)});
    m_public.push_back({CKA_PUBLIC_EXPONENT, numberOf(pair, OSSL_PKEY_PARAM_RSA_E)});
    m_private = m_public;
    m_private.push_back({CKA_PRIVATE_EXPONENT, numberOf(pair, OSSL_PKEY_PARAM_RSA_D)});
    m_private.push_back({CKA_PRIME_1, numberOf(pair, OSSL_PKEY_PARAM_RSA_FACTOR1)});
    m_private.push_back({CKA_PRIME_2, numberOf(pair, OSSL_PKEY_PARAM_RSA_FACTOR2)});
    m_private.push_back({CKA_EXPONENT_1, numberOf(pair, OSSL_PKEY_PARAM_RSA_EXPONENT1)});
    m_private.push_back({CKA_EXPONENT_2, numberOf(pair, OSSL_PKEY_PARAM_RSA_EXPONENT2)});
    m_private.push_back({CKA_COEFFICIENT, numberOf(pair, OSSL_PKEY_PARAM_RSA_COEFFICIENT1)});
}

void TokenKey::readCurve(const KeyHandle& pair)
{
    m_kind = CKK_EC;
    constexpr int bitsOfByte = 8;
    const auto length =
        static_cast<std::size_t>((EVP_PKEY_get_bits(pair.get()) + bitsOfByte - 1) / bitsOfByte);
    m_private.push_back({CKA_EC_PARAMS, curveOf(pair)});
    m_public = m_private;
    m_public.push_back({CKA_EC_POINT, pointOf(pair)});
    m_private.push_back({CKA_VALUE, numberOf(pair, OSSL_PKEY_PARAM_PRIV_KEY, length)});
}

void TokenKey::addPublic(TokenAttributes& attributes) const
{
    attributes.addNumber(CKA_KEY_TYPE, m_kind);
    for (const Number& number : m_public)
        attributes.addBytes(number.type, number.bytes);
}

void TokenKey::addPrivate(TokenAttributes& attributes) const
{
    attributes.addNumber(CKA_KEY_TYPE, m_kind);
    for (const Number& number : m_private)
        attributes.addBytes(number.type, number.bytes);
}

} // namespace qgtk
