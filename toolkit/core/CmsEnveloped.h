#pragma once

#include "toolkit/core/CmsObjects.h"
#include "toolkit/core/Ocsp.h"

namespace qgtk {

/**
 * An envelope (EnvelopedData) for the certificates of a list, by the number of a cipher, see contentCipher;
 * no content has gone through it yet. Throws CertListDamaged, CertDamaged, AlgorithmCodeUnknown,
 * KeyUnsuitable.
 */
CmsHandle startEnvelope(Context& context, ByteView recipients, int cipher, bool detached);

/** The same with the content, DER. */
Bytes envelope(Context& context, ByteView recipients, int cipher, ByteView content);

/**
 * Gives an envelope the key of one who may open it. Throws MessageKind, NotRecipient. A content key that does
 * not come out right shows only when the content is decrypted, so that nobody learns of keys by asking.
 */
void unlock(CMS_ContentInfo* message, const RequestSigner& recipient);

/**
 * Decrypts the content of a message that has its key: what the message carries, else the source's. Throws
 * ContentMissing, MessageAlgorithm, NotDecryptable, the last after some content was given.
 */
void decryptContent(CMS_ContentInfo* message, BIO* source, const BlockSink& take);

/** Opens an envelope in memory. */
SecretBytes openEnvelope(Context& context, ByteView message, const RequestSigner& recipient);

/** Content encrypted under the context's symmetric key (EncryptedData, DER). Throws NoCipherKey. */
Bytes encryptData(Context& context, ByteView content);

/** Opens such a message with its key. Throws as decryptContent, and CipherKeyLength. */
SecretBytes decryptData(Context& context, ByteView message, ByteView key);

/** Whom an envelope is for. Throws MessageKind. */
std::vector<MessageRecipient> recipientsOf(Context& context, ByteView message);

} // namespace qgtk
