#pragma once

#include "toolkit/core/TimeStamp.h"
#include "toolkit/core/TimeStampServer.h"
#include "toolkit/interface/CryptoInterface.h"

namespace qgtk {

/**
 * Makes a caller's request. Throws NotSupported for a signed one: a TimeStampReq has no place for a
 * signature, and a server that takes requests of its own kind alone would not read one in an envelope.
 */
inline Bytes stampRequest(Context& context, const DataInput& data, int hashAlg, const char* policy, bool sign)
{
    require(!sign, Code::NotSupported);
    return makeStampRequest(context, data, digestFor(context, hashAlg), textArgument(policy));
}

/** Buffers for what a token says; null for what a caller does not want. */
struct TokenTexts
{
    char* commonName;
    char* name;
    char* policy;
    char* hashName;
    char* hashValue;
    char* serialNumber;
    char* time;
    char* nonce;
};

/** Gives the certificate of a token's server and the texts, each cut to the size. Throws BadArgument for no
 * size. */
inline void storeTokenFields(const TokenFields& fields, int size, const TokenTexts& texts, BINSTR* signer)
{
    require(size > 0, Code::BadArgument);
    // The one step that can fail comes first.
    if (signer)
        assign(signer, fields.signer);
    const std::pair<const std::string&, char*> outputs[] = {
        {fields.commonName, texts.commonName},
        {fields.name, texts.name},
        {fields.policy, texts.policy},
        {fields.hashName, texts.hashName},
        {fields.hashValue, texts.hashValue},
        {fields.serialNumber, texts.serialNumber},
        {fields.time, texts.time},
        {fields.nonce, texts.nonce},
    };
    for (const auto& [text, buffer] : outputs)
        if (buffer)
            copyCut(text, size, buffer);
}

} // namespace qgtk
