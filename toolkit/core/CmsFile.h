#pragma once

#include "toolkit/core/CmsSigned.h"

namespace qgtk {

/*
 * Messages over files of any length, in a few blocks of memory. What is written is written whole or not at
 * all, see FileTarget; what is read is a regular file that is not empty. All throw as FileSource and
 * FileTarget, FileEmpty, and as the same operations in memory.
 */

/** Signs a file into a message with the content, BER, or without it, DER. */
void signFile(Context& context, const RequestSigner& signer, const SigningForm& form,
              const std::string& source, const std::string& target, bool withContent);

/** Where the content of a signed message is. */
enum class ContentPlace
{
    Message, /**< in the message; the content file is written */
    File,    /**< in the content file */
    Either   /**< in the message when it carries one, else in the content file */
};

/** Verifies a message file, see verifyMessage. The content is in its file only when all is well. */
void verifyFile(Context& context, int options, const std::string& message, const std::string& content,
                ContentPlace place);

/** Encrypts a file into an envelope with the content, BER. */
void envelopeFile(Context& context, ByteView recipients, int cipher, const std::string& source,
                  const std::string& target);

/** Encrypts a file into an envelope, DER, and a file with the bare encrypted content. Throws BadArgument for
 * one path for both. */
void envelopeFiles(Context& context, ByteView recipients, int cipher, const std::string& source,
                   const std::string& target, const std::string& encrypted);

/** Opens an envelope with the content. Throws ContentMissing when it carries none. */
void openEnvelopeFile(Context& context, const RequestSigner& recipient, const std::string& message,
                      const std::string& target);

/** Opens an envelope and its file of the encrypted content. Throws MessageKind when it carries content
 * itself. */
void openEnvelopeFiles(Context& context, const RequestSigner& recipient, const std::string& message,
                       const std::string& encrypted, const std::string& target);

} // namespace qgtk
