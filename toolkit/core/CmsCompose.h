#pragma once

#include "toolkit/core/CmsSigned.h"

namespace qgtk {

/**
 * The bytes that a signer elsewhere, as a token, is to sign for a message: the signed attributes, DER, or the
 * content itself without attributes. The context keeps what belongs to the message until composeMessage or
 * the next call. Throws CertDamaged, CertPublicKeyUnknown.
 */
Bytes bytesToSign(Context& context, ByteView certificate, const SigningForm& form, ByteView content);

/**
 * The message that the context waits with, completed by the signature. Throws NothingPending, SignatureWrong;
 * after that the context still waits.
 */
Bytes composeMessage(Context& context, ByteView signature);

} // namespace qgtk
