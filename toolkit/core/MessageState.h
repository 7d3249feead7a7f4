#pragma once

#include <ctime>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/** A signer of the last message that was verified. */
struct MessageSigner
{
    Bytes certificate;    /**< DER */
    std::string signTime; /**< local, "YYYY-MM-DD hh:mm:ss"; empty when the message tells none */
    Bytes signature;      /**< what a time stamp covers */
    Bytes timeStamp;      /**< the token of RFC 3161, DER; empty when there is none */
};

/** Whom a message is encrypted for; what the message does not tell is empty. */
struct MessageRecipient
{
    std::string issuer; /**< EUC-KR, leaf first */
    std::string serial; /**< lower-case hexadecimal */
    std::string keyId;  /**< lower-case hexadecimal */
};

/** A message that waits for a signature made elsewhere. */
struct PendingSignature
{
    int options = 0;
    int hashAlgorithm = 0;
    Bytes certificate; /**< DER of who signs */
    SecretBytes content;
    std::time_t signTime = 0;
};

/** What a context keeps of messages between operations. */
struct MessageState
{
    int options = 0; /**< QG_CMS_ bits for all messages that follow */
    std::vector<MessageSigner> signers;
    Bytes authorities; /**< list of the last verified message's certificates that are no signers' */
    std::vector<MessageRecipient> recipients;
    std::optional<PendingSignature> pending;
    std::deque<Bytes> challenges; /**< made and not answered yet, oldest first */
};

} // namespace qgtk
