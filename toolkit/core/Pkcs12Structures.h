#pragma once

#include <openssl/pkcs12.h>

#include "toolkit/core/Handles.h"

namespace qgtk {

/*
 * The structures of a PFX file (RFC 7292) as they are read and written here. OpenSSL's own decode what is
 * inside a bag, and encode it anew; these leave it as it stands, so that a key comes out as it went in, and
 * can be wiped.
 */

/** MacData. */
struct MacParts
{
    X509_SIG* digest;
    ASN1_OCTET_STRING* salt;
    ASN1_INTEGER* iterations; /**< null: 1 */
};

/** PFX. */
struct PfxParts
{
    ASN1_INTEGER* version;
    PKCS7* content;
    MacParts* mac; /**< null when there is none */
};

/** SafeBag. */
struct BagParts
{
    ASN1_OBJECT* type;
    ASN1_TYPE* value;
    STACK_OF(X509_ATTRIBUTE) * attributes; /**< null when there are none */
};

/** CertBag. */
struct CertificateBagParts
{
    ASN1_OBJECT* type;
    ASN1_TYPE* value;
};

DEFINE_STACK_OF(BagParts)

void freeMac(MacParts* mac);
void freePfx(PfxParts* pfx);
void freeBag(BagParts* bag);
void freeSafe(STACK_OF(BagParts) * safe);
void freeCertificateBag(CertificateBagParts* bag);
void freeContents(STACK_OF(PKCS7) * contents);

using PfxHandle = Handle<PfxParts, freePfx>;
using BagHandle = Handle<BagParts, freeBag>;             /**< wipes the bag when it goes */
using SafeHandle = Handle<STACK_OF(BagParts), freeSafe>; /**< wipes the bags */
using CertificateBagHandle = Handle<CertificateBagParts, freeCertificateBag>;
using Pkcs7Handle = Handle<PKCS7, PKCS7_free>;
using ContentsHandle = Handle<STACK_OF(PKCS7), freeContents>;

const ASN1_ITEM* macItem();
const ASN1_ITEM* pfxItem();
const ASN1_ITEM* bagItem();
const ASN1_ITEM* safeItem();
const ASN1_ITEM* certificateBagItem();

/** Decodes a structure, DER or BER; bytes behind it are ignored. Null when the bytes are something else. */
template <typename H>
H decodeItem(ByteView bytes, const ASN1_ITEM* item)
{
    return decodeDer<H>(
        [item](void*, const unsigned char** position, long length) {
            return reinterpret_cast<typename H::pointer>(ASN1_item_d2i(nullptr, position, length, item));
        },
        bytes);
}

/** Encodes a structure. Throws std::bad_alloc. */
template <typename Buffer, typename T>
Buffer encodeItem(const T* object, const ASN1_ITEM* item)
{
    return encodeDer<Buffer>(
        [item](const T* value, unsigned char** target) {
            return ASN1_item_i2d(reinterpret_cast<const ASN1_VALUE*>(value), target, item);
        },
        object);
}

/** Makes an empty structure. Throws std::bad_alloc. */
template <typename H>
H newItem(const ASN1_ITEM* item)
{
    return owned<H>(reinterpret_cast<typename H::pointer>(ASN1_item_new(item)));
}

} // namespace qgtk
