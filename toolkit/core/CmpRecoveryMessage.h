#pragma once

#include "toolkit/core/Crypto.h"

/*
 * Key recovery (RFC 4210, sections 5.3.7 and 5.3.8): OpenSSL has neither of the messages. A request for it
 * is in all but the body's number an initial request.
 */

namespace qgtk {

/** Bodies (RFC 4210, section 5.1.2). */
inline constexpr int keyRecoveryResponse = 10;

/** An initial request, DER, as a request for recovery, with its MAC by a secret. Throws Internal for another
 * message. */
Bytes asRecoveryRequest(const Crypto& crypto, ByteView initialRequest, std::string_view secret);

/** Whether a response has the transaction and the nonce of a request; both DER. */
bool isAnswerTo(ByteView request, ByteView response);

/** A certificate and what its key is encrypted as. */
struct RecoveredPair
{
    Bytes certificate;  /**< DER */
    Bytes encryptedKey; /**< EncryptedValue, DER; empty: none */
};

/** What a response holds. */
struct RecoveryContent
{
    int status;             /**< PKIStatus */
    std::string statusText; /**< UTF-8 */
    std::vector<RecoveredPair> pairs;
};

/** Throws ReplyDamaged. */
RecoveryContent recoveryContent(ByteView response);

/**
 * Opens an EncryptedValue (RFC 4211, section 2.1) with the private RSA key that its symmetric key is
 * encrypted for: PKCS#1 v1.5, and any cipher in CBC. Throws ReplyDamaged, CryptoUnavailable for the cipher,
 * NotDecryptable.
 */
SecretBytes openEncryptedValue(const Crypto& crypto, ByteView value, EVP_PKEY* key);

} // namespace qgtk
