#include "toolkit/core/KeyRandom.h"

#include "toolkit/core/Oid.h"

namespace qgtk {

namespace {

using AttributeHandle = Handle<X509_ATTRIBUTE, X509_ATTRIBUTE_free>;

/** The bit string of an attribute when it is the random value, else null. */
const ASN1_BIT_STRING* randomOf(X509_ATTRIBUTE* attribute)
{
    if (dottedOid(X509_ATTRIBUTE_get0_object(attribute)) != oids::randomNumber)
        return nullptr;
    const ASN1_TYPE* value = X509_ATTRIBUTE_get0_type(attribute, 0);
    return value && value->type == V_ASN1_BIT_STRING ? value->value.bit_string : nullptr;
}

/** A bit string of whole bytes. */
StringHandle bitString(ByteView bytes)
{
    StringHandle bits = owned<StringHandle>(ASN1_STRING_type_new(V_ASN1_BIT_STRING));
    if (!ASN1_STRING_set(bits.get(), bytes.data(), static_cast<int>(bytes.size())))
        throw std::bad_alloc();
    // Without the flag trailing zero bits are dropped when the value is encoded.
    bits->flags = (bits->flags & ~7L) | ASN1_STRING_FLAG_BITS_LEFT;
    return bits;
}

} // namespace

SecretBytes randomAmong(const STACK_OF(X509_ATTRIBUTE) * attributes)
{
    for (int i = 0; i < sk_X509_ATTRIBUTE_num(attributes); ++i) {
        const ASN1_BIT_STRING* bits = randomOf(sk_X509_ATTRIBUTE_value(attributes, i));
        if (!bits)
            continue;
        const ByteView random = contentOf(bits);
        return {random.begin(), random.end()};
    }
    return {};
}

SecretBytes keyRandom(ByteView plain)
{
    SecretBytes random = randomAmong(PKCS8_pkey_get0_attrs(decodePlainKey(plain).get()));
    require(!random.empty(), Code::NoKeyRandom);
    return random;
}

SecretBytes withKeyRandom(ByteView plain, ByteView random)
{
    const PlainKeyHandle key = decodePlainKey(plain);
    const ObjectHandle type = owned<ObjectHandle>(OBJ_txt2obj(oids::randomNumber, 1));
    if (X509at_get_attr_by_OBJ(PKCS8_pkey_get0_attrs(key.get()), type.get(), -1) >= 0)
        return {plain.begin(), plain.end()}; // OpenSSL takes no second one
    const AttributeHandle attribute = owned<AttributeHandle>(X509_ATTRIBUTE_new());
    const StringHandle bits = bitString(random);
    const bool added = X509_ATTRIBUTE_set1_object(attribute.get(), type.get()) &&
                       X509_ATTRIBUTE_set1_data(attribute.get(), V_ASN1_BIT_STRING, bits.get(), -1) &&
                       PKCS8_pkey_add1_attr(key.get(), attribute.get());
    if (!added)
        throw std::bad_alloc();
    return encodeDer<SecretBytes>(i2d_PKCS8_PRIV_KEY_INFO, key.get());
}

} // namespace qgtk
