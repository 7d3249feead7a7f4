#include "toolkit/core/Pkcs12Structures.h"

#include <openssl/asn1t.h>

#include "toolkit/core/PrivateKey.h"

namespace qgtk {

namespace {

// clang-format off
ASN1_SEQUENCE(MacParts) = {
    ASN1_SIMPLE(MacParts, digest, X509_SIG),
    ASN1_SIMPLE(MacParts, salt, ASN1_OCTET_STRING),
    ASN1_OPT(MacParts, iterations, ASN1_INTEGER)
} static_ASN1_SEQUENCE_END(MacParts)

ASN1_SEQUENCE(PfxParts) = {
    ASN1_SIMPLE(PfxParts, version, ASN1_INTEGER),
    ASN1_SIMPLE(PfxParts, content, PKCS7),
    ASN1_OPT(PfxParts, mac, MacParts)
} static_ASN1_SEQUENCE_END(PfxParts)

ASN1_SEQUENCE(BagParts) = {
    ASN1_SIMPLE(BagParts, type, ASN1_OBJECT),
    ASN1_EXP(BagParts, value, ASN1_ANY, 0),
    ASN1_SET_OF_OPT(BagParts, attributes, X509_ATTRIBUTE)
} static_ASN1_SEQUENCE_END(BagParts)

ASN1_ITEM_TEMPLATE(SafeParts) =
    ASN1_EX_TEMPLATE_TYPE(ASN1_TFLG_SEQUENCE_OF, 0, SafeParts, BagParts)
static_ASN1_ITEM_TEMPLATE_END(SafeParts)

ASN1_SEQUENCE(CertificateBagParts) = {
    ASN1_SIMPLE(CertificateBagParts, type, ASN1_OBJECT),
    ASN1_EXP(CertificateBagParts, value, ASN1_ANY, 0)
} static_ASN1_SEQUENCE_END(CertificateBagParts)
// clang-format on

} // namespace

const ASN1_ITEM* macItem()
{
    return ASN1_ITEM_rptr(MacParts);
}

const ASN1_ITEM* pfxItem()
{
    return ASN1_ITEM_rptr(PfxParts);
}

const ASN1_ITEM* bagItem()
{
    return ASN1_ITEM_rptr(BagParts);
}

const ASN1_ITEM* safeItem()
{
    return ASN1_ITEM_rptr(SafeParts);
}

const ASN1_ITEM* certificateBagItem()
{
    return ASN1_ITEM_rptr(CertificateBagParts);
}

void freeMac(MacParts* mac)
{
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(mac), macItem());
}

void freePfx(PfxParts* pfx)
{
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(pfx), pfxItem());
}

void freeBag(BagParts* bag)
{
    if (bag->value && bag->value->type == V_ASN1_SEQUENCE) {
        const ASN1_STRING* content = bag->value->value.sequence;
        OPENSSL_cleanse(content->data, static_cast<std::size_t>(content->length));
    }
    wipeAttributes(bag->attributes);
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(bag), bagItem());
}

void freeSafe(STACK_OF(BagParts) * safe)
{
    sk_BagParts_pop_free(safe, freeBag);
}

void freeCertificateBag(CertificateBagParts* bag)
{
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(bag), certificateBagItem());
}

void freeContents(STACK_OF(PKCS7) * contents)
{
    sk_PKCS7_pop_free(contents, PKCS7_free);
}

} // namespace qgtk
