#include "toolkit/core/CmsAttributes.h"

#include <openssl/asn1t.h>

#include "toolkit/core/CertificateText.h"
#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

using AttributeHandle = Handle<X509_ATTRIBUTE, X509_ATTRIBUTE_free>;

// clang-format off
/** What a signature covers: the attributes as a SET, whatever tag they have in the message. */
ASN1_ITEM_TEMPLATE(AttributeSet) =
    ASN1_EX_TEMPLATE_TYPE(ASN1_TFLG_SET_OF, 0, attributes, X509_ATTRIBUTE)
static_ASN1_ITEM_TEMPLATE_END(AttributeSet)
    // clang-format on

    /** Releases a stack of attributes that somebody else owns. */
    void freeBorrowed(STACK_OF(X509_ATTRIBUTE) * attributes)
{
    sk_X509_ATTRIBUTE_free(attributes);
}

void add(CMS_SignerInfo* info, int type, int valueType, const void* value, int length = -1)
{
    if (CMS_signed_add1_attr_by_NID(info, type, valueType, value, length) != 1)
        throw std::bad_alloc();
}

} // namespace

void addSigningTime(CMS_SignerInfo* info, std::time_t time)
{
    const auto encoded = owned<StringHandle>(ASN1_TIME_set(nullptr, time));
    add(info, NID_pkcs9_signingTime, ASN1_STRING_type(encoded.get()), encoded.get());
}

void addContentAttributes(CMS_SignerInfo* info, const ASN1_OBJECT* contentType, ByteView digest)
{
    add(info, NID_pkcs9_contentType, V_ASN1_OBJECT, contentType);
    add(info, NID_pkcs9_messageDigest, V_ASN1_OCTET_STRING, digest.data(), static_cast<int>(digest.size()));
}

std::string timeOf(const ASN1_TYPE* value)
{
    const bool isTime = value && (value->type == V_ASN1_UTCTIME || value->type == V_ASN1_GENERALIZEDTIME);
    std::tm parts = {};
    if (!isTime || ASN1_TIME_to_tm(value->value.asn1_string, &parts) != 1)
        return {};
    return timeText(timegm(&parts));
}

std::string signTimeOf(const CMS_SignerInfo* info)
{
    const int place = CMS_signed_get_attr_by_NID(info, NID_pkcs9_signingTime, -1);
    X509_ATTRIBUTE* attribute = place < 0 ? nullptr : CMS_signed_get_attr(info, place);
    return attribute ? timeOf(X509_ATTRIBUTE_get0_type(attribute, 0)) : std::string();
}

void requireContentType(const CMS_SignerInfo* info, const ASN1_OBJECT* contentType)
{
    if (CMS_signed_get_attr_count(info) <= 0)
        return;
    constexpr int onlyOne = -3;
    const auto* named = static_cast<const ASN1_OBJECT*>(
        CMS_signed_get0_data_by_OBJ(info, OBJ_nid2obj(NID_pkcs9_contentType), onlyOne, V_ASN1_OBJECT));
    require(named && OBJ_cmp(named, contentType) == 0, Code::SignatureWrong);
}

Bytes signedAttributes(const CMS_SignerInfo* info)
{
    const auto attributes =
        owned<Handle<STACK_OF(X509_ATTRIBUTE), freeBorrowed>>(sk_X509_ATTRIBUTE_new_null());
    for (int i = 0; i < CMS_signed_get_attr_count(info); ++i)
        if (sk_X509_ATTRIBUTE_push(attributes.get(), CMS_signed_get_attr(info, i)) == 0)
            throw std::bad_alloc();
    const auto encode = [](STACK_OF(X509_ATTRIBUTE) * set, unsigned char** target) {
        return ASN1_item_i2d(reinterpret_cast<const ASN1_VALUE*>(set), target, ASN1_ITEM_rptr(AttributeSet));
    };
    return encodeDer<Bytes>(encode, attributes.get());
}

Bytes timeStampOf(const CMS_SignerInfo* info)
{
    auto* signer = const_cast<CMS_SignerInfo*>(info);
    const int place = CMS_unsigned_get_attr_by_NID(signer, NID_id_smime_aa_timeStampToken, -1);
    X509_ATTRIBUTE* attribute = place < 0 ? nullptr : CMS_unsigned_get_attr(signer, place);
    const ASN1_TYPE* value = attribute ? X509_ATTRIBUTE_get0_type(attribute, 0) : nullptr;
    if (!value || value->type != V_ASN1_SEQUENCE)
        return {};
    const ByteView der = contentOf(value->value.sequence);
    return {der.begin(), der.end()};
}

void setTimeStamp(CMS_SignerInfo* info, ByteView token)
{
    for (int place = CMS_unsigned_get_attr_by_NID(info, NID_id_smime_aa_timeStampToken, -1); place >= 0;
         place = CMS_unsigned_get_attr_by_NID(info, NID_id_smime_aa_timeStampToken, -1))
        AttributeHandle(CMS_unsigned_delete_attr(info, place)).reset();
    if (CMS_unsigned_add1_attr_by_NID(info, NID_id_smime_aa_timeStampToken, V_ASN1_SEQUENCE, token.data(),
                                      static_cast<int>(token.size())) != 1)
        throw std::bad_alloc();
}

} // namespace qgtk
