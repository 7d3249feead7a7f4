#pragma once

#include "toolkit/core/CmsObjects.h"

namespace qgtk {

/** Certificates that the context has and a message may lack: the list of SetCaPubs, and the loaded one. */
X509Stack knownCertificates(Context& context);

/**
 * Checks the signatures of all signers of a signed message; their certificates are the message's own, else
 * those of the context. The content is the message's, else the source's; it is given block by block before
 * the verdict. Throws MessageKind (no signed message, or nobody signed it), SignerCertMissing,
 * ContentMissing, SignatureWrong, MessageAlgorithm.
 */
void checkSigners(Context& context, CMS_ContentInfo* message, BIO* source, const BlockSink& take);

/** The signers of a message that checkSigners has let pass. */
std::vector<MessageSigner> signersOf(CMS_ContentInfo* message);

/** List of the certificates that are no signers'. */
Bytes otherCertificates(STACK_OF(X509) * certificates, const std::vector<MessageSigner>& signers);

/** Forgets the signers of the message before. */
void forgetSigners(Context& context);

/**
 * Keeps the signers of a message and the authorities that it brings, having verified the signers'
 * certificates when the options say so. Throws as verifyCertificate.
 */
void keepSigners(Context& context, int options, std::vector<MessageSigner> signers, Bytes authorities);

/** The content's digest as a signer tells it who used this digest. Throws ContentMissing when there is none.
 */
Bytes digestOfSigners(CMS_ContentInfo* message, const EVP_MD* digest);

/** The signer of a decoded message by its place. Throws MessageIndex. */
CMS_SignerInfo* signerAt(CMS_ContentInfo* message, int index);

} // namespace qgtk
