#pragma once

#include <openssl/ec.h>

#include "toolkit/core/Handles.h"
#include "toolkit/core/TokenSession.h"

namespace qgtk {

using EcdsaHandle = Handle<ECDSA_SIG, ECDSA_SIG_free>;

/** The key of a kind (CKO_PUBLIC_KEY, CKO_PRIVATE_KEY) with an identifier. Throws TokenObjectMissing. */
CK_OBJECT_HANDLE keyOnToken(const TokenSession& session, CK_OBJECT_CLASS kind, ByteView id);

/** The private one, which the user alone sees. Throws TokenLoggedOut, TokenObjectMissing. */
CK_OBJECT_HANDLE privateKeyOnToken(const TokenSession& session, ByteView id);

/** Whether a key is of an elliptic curve. */
bool isOfCurve(const TokenSession& session, CK_OBJECT_HANDLE key);

/**
 * The steps that a token does with a key, each of one part. They throw as the module fails: KeyUnsuitable,
 * NotSupported for a mechanism that the token lacks, TokenRemoved, ModuleFailed.
 */
SecretBytes signOnce(const TokenSession& session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key,
                     ByteView data);
void verifyOnce(const TokenSession& session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key, ByteView data,
                ByteView signature);
SecretBytes encryptOnce(const TokenSession& session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key,
                        ByteView data);

/** Throws NotDecryptable for every fault of the data. */
SecretBytes decryptOnce(const TokenSession& session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key,
                        ByteView data);

/** The secret that a key of a curve shares with a point (X9.63, uncompressed): as many bytes as the field
 * has.
 */
SecretBytes agreeOnce(const TokenSession& session, CK_OBJECT_HANDLE key, ByteView point, std::size_t length);

/** Both numbers of equal length, as modules give and take a signature by a curve, as OpenSSL has it. */
EcdsaHandle ecdsaOf(ByteView numbers);

} // namespace qgtk
