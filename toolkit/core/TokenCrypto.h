#pragma once

#include "toolkit/core/AsymmetricCipher.h"
#include "toolkit/core/PairPurpose.h"
#include "toolkit/core/Signature.h"
#include "toolkit/core/TokenSession.h"

namespace qgtk {

/**
 * Makes a pair on the token: RSA of 2048, 3072 or 4096 bits, or on the curve of 256, 384 or 521. The private
 * key never leaves it. For management RSA keys decrypt and keys of curves agree; they sign only when it is
 * asked for, as they must to prove to an authority that they are there. Throws TokenLoggedOut,
 * AlgorithmCodeUnknown, TokenObjectExists, NotSupported (what the token lacks).
 */
void generatePair(const TokenSession& session, int algorithm, PairPurpose purpose, ByteView id,
                  bool signsAnyway = false);

/**
 * Signs with the token's private key; ECDSA in DER. Throws TokenLoggedOut, TokenObjectMissing, KeyUnsuitable,
 * AlgorithmCodeUnknown for SHA-3, NotSupported.
 */
SecretBytes signOnToken(const Crypto& crypto, const TokenSession& session, ByteView id,
                        const SignatureForm& form, ByteView data);

/** Verifies with the token's public key. Throws SignatureWrong, and as above but for the login. */
void verifyOnToken(const Crypto& crypto, const TokenSession& session, ByteView id, const SignatureForm& form,
                   ByteView data, ByteView signature);

/** Encrypts with the token's public RSA key. Throws TokenObjectMissing, KeyUnsuitable, DataLength,
 * NotSupported. */
SecretBytes encryptOnToken(const TokenSession& session, ByteView id, const EncryptionForm& form,
                           ByteView data);

/** Decrypts with the private one. Throws TokenLoggedOut, NotDecryptable for every fault of the data, and as
 * above.
 */
SecretBytes decryptOnToken(const TokenSession& session, ByteView id, const EncryptionForm& form,
                           ByteView data);

} // namespace qgtk
