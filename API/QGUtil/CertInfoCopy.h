#pragma once

#include <algorithm>
#include <cstring>

#include "BoundedText.h"
#include "quillgate/records.h"

/**
 * Field-by-field copies of certificate records.
 *
 * Four places copy a CERTINFO, each with its own list of fields, and none of them may copy the record as a
 * whole: a source field without a value leaves the target's field as it is, and hosts rely on that. A user
 * of this header names its fields, or the groups below, in its own order.
 *
 *     copyTexts<&CERTINFO::szDriveInfo, &CERTINFO::szCertPassword>(target, source);
 */
namespace certinfo {

/** Copies a byte field with its length when the length is above 0 and fits the field. */
template <auto Bytes, auto Length>
void copyBytes(CERTINFO& target, const CERTINFO& source)
{
    const int length = source.*Length;
    if (length <= 0 || length > static_cast<int>(sizeof(source.*Bytes)))
        return;
    std::memcpy(target.*Bytes, source.*Bytes, static_cast<size_t>(length));
    target.*Length = length;
}

/** Copies text fields, each when it is not empty: at most the field's size less one, cut silently. */
template <auto... Texts>
void copyTexts(CERTINFO& target, const CERTINFO& source)
{
    (copyText(target.*Texts, source.*Texts), ...);
}

/** A named group of text fields. */
template <auto... Texts>
struct TextGroup
{
    static void copy(CERTINFO& target, const CERTINFO& source) { copyTexts<Texts...>(target, source); }

    /** Empties the fields, zeroing what was written and touching nothing else. */
    static void clear(CERTINFO& record)
    {
        (std::memset(record.*Texts, 0, strnlen(record.*Texts, sizeof(record.*Texts))), ...);
    }
};

/** Copies number fields. */
template <auto... Values>
void copyValues(CERTINFO& target, const CERTINFO& source)
{
    ((target.*Values = source.*Values), ...);
}

/** Both certificates and both plain keys. */
inline void copyPairs(CERTINFO& target, const CERTINFO& source)
{
    copyBytes<&CERTINFO::szSignCert, &CERTINFO::nSignCertLen>(target, source);
    copyBytes<&CERTINFO::szSignKey, &CERTINFO::nSignKeyLen>(target, source);
    copyBytes<&CERTINFO::szKmCert, &CERTINFO::nKmCertLen>(target, source);
    copyBytes<&CERTINFO::szKmKey, &CERTINFO::nKmKeyLen>(target, source);
}

/** Both keys as they are stored on the medium. */
inline void copyEncryptedKeys(CERTINFO& target, const CERTINFO& source)
{
    copyBytes<&CERTINFO::szEncSignKey, &CERTINFO::nEncSignKeyLen>(target, source);
    copyBytes<&CERTINFO::szEncKmKey, &CERTINFO::nEncKmKeyLen>(target, source);
}

/** The random value of the key. */
inline void copyKeyRandom(CERTINFO& target, const CERTINFO& source)
{
    copyBytes<&CERTINFO::szKeyRandom, &CERTINFO::nKeyRandomLen>(target, source);
}

/** szVersion to szCrlDp, in field order. */
using TextsToCrlDp =
    TextGroup<&CERTINFO::szVersion, &CERTINFO::szSerialNumber, &CERTINFO::szAlgorithm, &CERTINFO::szSubjectDN,
              &CERTINFO::szSubjectCN, &CERTINFO::szPubKey, &CERTINFO::szPubKeyAlgo, &CERTINFO::szPubKeyLen,
              &CERTINFO::szKeyUsage, &CERTINFO::szCrlDp>;

/** szCertPolicyIDS to szAfterDay, in field order, the four paths among them. */
using TextsFromPolicyIds =
    TextGroup<&CERTINFO::szCertPolicyIDS, &CERTINFO::szIssuerDN, &CERTINFO::szIssuerName,
              &CERTINFO::szIssuerCN, &CERTINFO::szDivision, &CERTINFO::szSignCertPath,
              &CERTINFO::szSignKeyPath, &CERTINFO::szKmCertPath, &CERTINFO::szKmKeyPath, &CERTINFO::szBefore,
              &CERTINFO::szAfter, &CERTINFO::szBeforeDay, &CERTINFO::szAfterDay>;

/** szSubjectAltName, szAuthKeyID, szSubKeyID, szAIA. */
using ExtensionTexts =
    TextGroup<&CERTINFO::szSubjectAltName, &CERTINFO::szAuthKeyID, &CERTINFO::szSubKeyID, &CERTINFO::szAIA>;

inline void copyTextsToCrlDp(CERTINFO& target, const CERTINFO& source)
{
    TextsToCrlDp::copy(target, source);
}

inline void copyTextsFromPolicyIds(CERTINFO& target, const CERTINFO& source)
{
    TextsFromPolicyIds::copy(target, source);
}

inline void copyExtensions(CERTINFO& target, const CERTINFO& source)
{
    ExtensionTexts::copy(target, source);
}

/** Validity state, medium and CA family, without nRemainDay. */
inline void copyStates(CERTINFO& target, const CERTINFO& source)
{
    copyValues<&CERTINFO::nCertbit1024, &CERTINFO::nCertState, &CERTINFO::nCertVerifyState,
               &CERTINFO::nMediaType, &CERTINFO::nCertType>(target, source);
}

/** Empties a byte field, zeroing what its length covers. */
template <auto Bytes, auto Length>
void clearBytes(CERTINFO& record)
{
    if (record.*Length > 0)
        std::memset(record.*Bytes, 0, std::min(static_cast<size_t>(record.*Length), sizeof(record.*Bytes)));
    record.*Length = 0;
}

/**
 * Empties a record that is used again and again. What a text's terminator or a field's length hides is left,
 * so that 62 KB need not be gone through for each of many certificates; no copy takes it along.
 */
inline void clearRecord(CERTINFO& record)
{
    clearBytes<&CERTINFO::szSignCert, &CERTINFO::nSignCertLen>(record);
    clearBytes<&CERTINFO::szSignKey, &CERTINFO::nSignKeyLen>(record);
    clearBytes<&CERTINFO::szKmCert, &CERTINFO::nKmCertLen>(record);
    clearBytes<&CERTINFO::szKmKey, &CERTINFO::nKmKeyLen>(record);
    clearBytes<&CERTINFO::szEncSignKey, &CERTINFO::nEncSignKeyLen>(record);
    clearBytes<&CERTINFO::szEncKmKey, &CERTINFO::nEncKmKeyLen>(record);
    clearBytes<&CERTINFO::szKeyRandom, &CERTINFO::nKeyRandomLen>(record);
    TextsToCrlDp::clear(record);
    TextsFromPolicyIds::clear(record);
    ExtensionTexts::clear(record);
    TextGroup<&CERTINFO::szCertPolicy, &CERTINFO::szDriveInfo, &CERTINFO::szLibPath, &CERTINFO::szPinNumber,
              &CERTINFO::szCertPassword>::clear(record);
    record.nRemainDay = record.nCertbit1024 = record.nCertState = record.nCertVerifyState = 0;
    record.nMediaType = record.nCertType = 0;
}

} // namespace certinfo
