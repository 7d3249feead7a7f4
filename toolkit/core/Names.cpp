#include "toolkit/core/Names.h"

#include <algorithm>
#include <openssl/asn1t.h>

#include "toolkit/core/Errors.h"
#include "toolkit/core/Handles.h"
#include "toolkit/core/Oid.h"

namespace qgtk {

using Level = STACK_OF(X509_NAME_ENTRY);
DEFINE_STACK_OF(Level)
using Levels = STACK_OF(Level);

namespace {

// A Name without OpenSSL's own comparison form, which costs more than all the rest and refuses EUC-KR bytes
// in a UTF8String, as old certificates have them.
// clang-format off
ASN1_ITEM_TEMPLATE(NameLevel) =
    ASN1_EX_TEMPLATE_TYPE(ASN1_TFLG_SET_OF, 0, Level, X509_NAME_ENTRY)
static_ASN1_ITEM_TEMPLATE_END(NameLevel)

ASN1_ITEM_TEMPLATE(RawName) =
    ASN1_EX_TEMPLATE_TYPE(ASN1_TFLG_SEQUENCE_OF, 0, Levels, NameLevel)
static_ASN1_ITEM_TEMPLATE_END(RawName)
    // clang-format on

    void freeLevels(Levels * levels)
{
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(levels), ASN1_ITEM_rptr(RawName));
}

using NameHandle = Handle<Levels, freeLevels>;

NameHandle decodeName(ByteView der)
{
    const unsigned char* position = der.data();
    NameHandle name(reinterpret_cast<Levels*>(
        ASN1_item_d2i(nullptr, &position, static_cast<long>(der.size()), ASN1_ITEM_rptr(RawName))));
    require(name != nullptr, Code::CertDamaged);
    return name;
}

/** Short name of an attribute type in lower case, as "cn", or its dotted identifier. */
std::string typeText(const ASN1_OBJECT* type)
{
    const int nid = OBJ_obj2nid(type);
    if (nid == NID_undef)
        return dottedOid(type);
    std::string text = nid == NID_pkcs9_emailAddress ? "email" : OBJ_nid2sn(nid);
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return text;
}

std::string levelText(const Level* level, Charset& charset)
{
    std::string text;
    for (int i = 0; i < sk_X509_NAME_ENTRY_num(level); ++i) {
        const X509_NAME_ENTRY* entry = sk_X509_NAME_ENTRY_value(level, i);
        text += (text.empty() ? "" : "+") + typeText(X509_NAME_ENTRY_get_object(entry)) + "=" +
                charset.fromAsn1(X509_NAME_ENTRY_get_data(entry));
    }
    return text;
}

/** The common name of one level; null when it has none. */
const ASN1_STRING* commonNameIn(const Level* level)
{
    for (int i = 0; i < sk_X509_NAME_ENTRY_num(level); ++i) {
        const X509_NAME_ENTRY* entry = sk_X509_NAME_ENTRY_value(level, i);
        if (OBJ_obj2nid(X509_NAME_ENTRY_get_object(entry)) == NID_commonName)
            return X509_NAME_ENTRY_get_data(entry);
    }
    return nullptr;
}

} // namespace

std::string nameText(ByteView der, Charset& charset)
{
    const NameHandle name = decodeName(der);
    std::string text;
    for (int i = sk_Level_num(name.get()) - 1; i >= 0; --i)
        text += (text.empty() ? "" : ",") + levelText(sk_Level_value(name.get(), i), charset);
    return text;
}

std::string nameText(const X509_NAME* name, Charset& charset)
{
    const unsigned char* der = nullptr;
    std::size_t length = 0;
    require(X509_NAME_get0_der(name, &der, &length) == 1, Code::CertExtensionDamaged);
    return nameText(ByteView{der, length}, charset);
}

std::string commonNameText(ByteView der, Charset& charset)
{
    const NameHandle name = decodeName(der);
    for (int i = sk_Level_num(name.get()) - 1; i >= 0; --i)
        if (const ASN1_STRING* value = commonNameIn(sk_Level_value(name.get(), i)))
            return charset.fromAsn1(value);
    const std::string whole = nameText(der, charset);
    const std::string leaf = whole.substr(0, whole.find(','));
    return leaf.substr(leaf.find('=') + 1);
}

} // namespace qgtk
