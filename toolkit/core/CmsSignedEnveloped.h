#pragma once

#include "toolkit/core/CmsSigned.h"

namespace qgtk {

/**
 * A signed and enveloped message (PKCS#7 version 1.5, RFC 2315, section 11, as OpenSSL writes it: the
 * signature is not encrypted). Recipients have RSA keys, and the signature is that of PKCS#1 version 1.5 or
 * ECDSA. Throws as startEnvelope and signMessage; NotSupported for a detached one.
 */
Bytes signAndEnvelope(Context& context, const RequestSigner& signer, const SigningForm& form,
                      ByteView recipients, int cipher, ByteView content);

/**
 * Opens such a message and verifies its signers, who are kept in the context, see verifyMessage. Throws
 * MessageKind, NotRecipient, NotDecryptable, SignerCertMissing, SignatureWrong, and as verifyCertificate.
 */
SecretBytes openSignedEnvelope(Context& context, ByteView message, int options,
                               const RequestSigner& recipient);

} // namespace qgtk
