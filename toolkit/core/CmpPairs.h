#pragma once

#include "toolkit/core/CmpIssuing.h"

namespace qgtk {

/** A certificate and its private key. */
struct CmpPair
{
    PairPurpose purpose;
    Bytes certificate; /**< DER */
    SecretBytes key;   /**< PrivateKeyInfo, DER */
};

/** The same as the exchanges take it. */
struct OpenPair
{
    PairPurpose purpose;
    X509Handle certificate;
    KeyHandle key;
    ByteView plainKey; /**< of the pair that it was opened from */
};

/**
 * Opens pairs, which must live on; who signs messages, the signing pair, else the first, comes last. Throws
 * BadArgument without any, CertDamaged, KeyNotPlain, KeyMismatch.
 */
std::vector<OpenPair> openPairs(const Crypto& crypto, const std::vector<CmpPair>& pairs);

/** Who signs messages. */
CmpSigner signerOf(const std::vector<OpenPair>& pairs);

/** What an authority has issued. */
struct CmpResult
{
    std::vector<CmpPair> pairs; /**< as they were asked for */
    Bytes authorities;          /**< list of authorities' certificates, at least the one given */
};

/** Requests the certificate of a plain key, in the place of an old one or null. Throws as CmpIssuing. */
CmpPair issueFor(const Crypto& crypto, CmpIssuing& issuing, PairPurpose purpose, std::string_view idNumber,
                 SecretBytes key, X509* old);

/**
 * Makes pairs and requests a certificate for each. New keys are of the kind that the configuration says and
 * have a random value of 20 bytes. All or none: when one is refused, the revocation of those before is asked
 * for, as far as the server lets. Throws as CmpExchange::request, AlgorithmCodeUnknown for the configured
 * kind, and as readFile for the authority's certificate.
 */
CmpResult requestPairs(Context& context, const CmpApplication& application, const CmpSecret& secret,
                       const std::vector<PairPurpose>& purposes);

/**
 * Replaces certificates, with new keys or the same. The signing pair, else the first, signs all messages, and
 * is replaced last. Throws as above, and KeyMismatch, KeyNotPlain, CertDamaged before anything is sent.
 */
CmpResult updatePairs(Context& context, const CmpApplication& application, bool newKeys,
                      const std::vector<CmpPair>& pairs);

/**
 * Asks for the revocation of certificates, with a reason of RFC 5280, section 5.3.1, or -1 for none. The
 * signing pair, else the first, signs all messages and goes last; a certificate that stands there twice goes
 * once. Throws as CmpExchange::revoke, BadArgument for the reason, IssuerMissing, KeyMismatch, KeyNotPlain,
 * CertDamaged.
 */
void revokePairs(Context& context, const CmpServer& server, int reason, const std::vector<CmpPair>& pairs);

/**
 * Has the key-management pair of the holder of a signing pair given back by the authority, which encrypts the
 * key for the signing pair; of several the newest. Its issuer need not be known: the secret proves the
 * answer. Throws as CmpExchange::recover, CmpRefused, CmpKeyMissing, KeyUnsuitable unless the signing key is
 * RSA, NotDecryptable, CmpCertificateOther when the pair is none or somebody else's, KeyMismatch,
 * KeyNotPlain, CertDamaged.
 */
CmpPair recoverPair(Context& context, const CmpServer& server, const CmpSecret& secret,
                    const CmpPair& signing);

} // namespace qgtk
