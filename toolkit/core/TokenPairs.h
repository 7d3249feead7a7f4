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

/** Whether anything on the token has an identifier. */
bool holdsPair(const TokenSession& session, ByteView id);

/** The random value that was written with a key. Throws TokenLoggedOut, TokenObjectMissing, NoKeyRandom. */
SecretBytes readRandom(const TokenSession& session, ByteView id);

/**
 * Writes certificate, both halves of the key and the key's random value, or nothing. Their identifier is the
 * SHA-1 of the public key's bits. The private key can't be read back. Throws TokenLoggedOut, CertDamaged,
 * KeyNotPlain, KeyMismatch, KeyUnsuitable (neither RSA nor of an elliptic curve), TokenObjectExists,
 * TokenReadOnly, TokenFull.
 */
void writePair(const Crypto& crypto, const TokenSession& session, ByteView certificate, ByteView plainKey);

/** The same under an identifier of the caller's. */
void writePair(const Crypto& crypto, const TokenSession& session, ByteView certificate, ByteView plainKey,
               ByteView id);

/** A certificate for a pair that is on the token. */
struct TokenCertificateData
{
    ByteView id;
    ByteView certificate; /**< DER */
    ByteView random;      /**< random value of the key; empty: none */
};

/**
 * Writes certificates and random values, all or nothing; those that the pairs had go then. Throws
 * TokenLoggedOut, CertDamaged, TokenReadOnly, TokenFull.
 */
void writeCertificates(const TokenSession& session, const std::vector<TokenCertificateData>& certificates);

/** Deletes all that has an identifier. Throws TokenLoggedOut, TokenObjectMissing. */
void deletePair(const TokenSession& session, ByteView id);

} // namespace qgtk
