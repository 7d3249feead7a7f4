#pragma once

#include "toolkit/core/Certificate.h"
#include "toolkit/core/TokenSession.h"

namespace qgtk {

/** A certificate on a token. */
struct TokenCertificate
{
    SecretBytes id; /**< what its keys have too */
    SecretBytes der;
};

/** What the key of a certificate is for. All of it without the extension. */
struct PairUse
{
    bool signs;
    bool decrypts;
    bool agrees;
};
PairUse useOf(const Certificate& certificate);

/** The X.509 certificates that have an identifier, in an order that stays while the session lasts. */
std::vector<TokenCertificate> listCertificates(const TokenSession& session);

/** The certificate with an identifier, DER. Throws TokenObjectMissing, CertDamaged. */
SecretBytes readCertificate(const TokenSession& session, ByteView id);

/** The random value that was written with a key. Throws TokenLoggedOut, TokenObjectMissing, NoKeyRandom. */
SecretBytes readRandom(const TokenSession& session, ByteView id);

/**
 * Writes certificate, both halves of the key and the key's random value, or nothing. Their identifier is the
 * SHA-1 of the public key's bits. The private key can't be read back. Throws TokenLoggedOut, CertDamaged,
 * KeyNotPlain, KeyMismatch, KeyUnsuitable (neither RSA nor of an elliptic curve), TokenObjectExists,
 * TokenReadOnly, TokenFull.
 */
void writePair(const Crypto& crypto, const TokenSession& session, ByteView certificate, ByteView plainKey);

/** Deletes all that has an identifier. Throws TokenLoggedOut, TokenObjectMissing. */
void deletePair(const TokenSession& session, ByteView id);

} // namespace qgtk
