#include <openssl/asn1t.h>

#include "toolkit/core/CertificateText.h"
#include "toolkit/core/Names.h"

namespace qgtk {

/**
 * The authority key identifier with its names undecoded: OpenSSL's own decoding of a directory name costs
 * more than all other extensions of a certificate together and refuses EUC-KR bytes in a UTF8String.
 */
struct AuthorityKey
{
    ASN1_OCTET_STRING* identifier;
    STACK_OF(ASN1_TYPE) * issuer;
    ASN1_INTEGER* serial;
};

namespace {

// clang-format off
ASN1_SEQUENCE(AuthorityKey) = {
    ASN1_IMP_OPT(AuthorityKey, identifier, ASN1_OCTET_STRING, 0),
    ASN1_IMP_SEQUENCE_OF_OPT(AuthorityKey, issuer, ASN1_ANY, 1),
    ASN1_IMP_OPT(AuthorityKey, serial, ASN1_INTEGER, 2)
} static_ASN1_SEQUENCE_END(AuthorityKey)
    // clang-format on

    void freeAuthorityKey(AuthorityKey * key)
{
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(key), ASN1_ITEM_rptr(AuthorityKey));
}

using AuthorityKeyHandle = Handle<AuthorityKey, freeAuthorityKey>;

/** Null when there is no such extension. Throws CertExtensionDamaged. */
AuthorityKeyHandle authorityKeyIn(const Certificate& certificate)
{
    const int index = X509v3_get_ext_by_NID(certificate.extensions(), NID_authority_key_identifier, -1);
    if (index < 0)
        return nullptr;
    X509_EXTENSION* extension = X509v3_get_ext(certificate.extensions(), index);
    AuthorityKeyHandle key(static_cast<AuthorityKey*>(
        ASN1_item_unpack(X509_EXTENSION_get_data(extension), ASN1_ITEM_rptr(AuthorityKey))));
    require(key != nullptr, Code::CertExtensionDamaged);
    return key;
}

/** Text of a general name that is a directory name; empty for other kinds. */
std::string directoryNameText(const ASN1_TYPE* generalName, Charset& charset)
{
    if (generalName->type != V_ASN1_OTHER)
        return {};
    const ByteView der = contentOf(generalName->value.asn1_string);
    const unsigned char* content = der.data();
    long length = 0;
    int tag = 0;
    int tagClass = 0;
    const int flags = ASN1_get_object(&content, &length, &tag, &tagClass, static_cast<long>(der.size()));
    require(flags == V_ASN1_CONSTRUCTED, Code::CertExtensionDamaged);
    return tag == GEN_DIRNAME ? nameText({content, static_cast<std::size_t>(length)}, charset)
                              : std::string();
}

} // namespace

std::string authorityKeyIdOf(const Certificate& certificate, Charset& charset)
{
    const AuthorityKeyHandle key = authorityKeyIn(certificate);
    std::string text;
    const auto appendLine = [&text](const char* label, const std::string& value) {
        if (!value.empty())
            text += (text.empty() ? "" : "\n") + (label + value);
    };
    if (key && key->identifier)
        appendLine("KeyID: ", hexText(contentOf(key->identifier)));
    for (int i = 0; key && i < sk_ASN1_TYPE_num(key->issuer); ++i)
        appendLine("Issuer: ", directoryNameText(sk_ASN1_TYPE_value(key->issuer, i), charset));
    if (key && key->serial)
        appendLine("SerialNumber: ", hexText(contentOf(key->serial)));
    return text;
}

} // namespace qgtk
