#pragma once

#include "quillgate/message_options.h"
#include "toolkit/core/CmsCompose.h"
#include "toolkit/core/CmsEnveloped.h"
#include "toolkit/core/CmsFile.h"
#include "toolkit/core/CmsSignedEnveloped.h"
#include "toolkit/core/CmsSigners.h"
#include "toolkit/core/CmsTimeStamp.h"
#include "toolkit/interface/Interface.h"

namespace qgtk {

/** Bytes that a message or its content may have when it is given in memory; files have no limit. */
inline constexpr std::size_t maxMessageLength = 256U << 20;

/** The bytes of a message or content. Throws BadArgument, MessageTooLarge. */
inline ByteView messageBytes(const BINSTR* input)
{
    const ByteView bytes = viewOf(input);
    require(bytes.size() <= maxMessageLength, Code::MessageTooLarge);
    return bytes;
}

/** A certificate and the plain private key that belongs to it, as callers give them. */
struct PairArgument
{
    const BINSTR* certificate;
    const BINSTR* key;

    RequestSigner in(Context& context) const
    {
        return requestSigner(context.crypto(), viewOf(certificate), viewOf(key));
    }
};

inline void signData(Context& context, int options, const PairArgument& pair, const BINSTR* data,
                     const char* signTime, BINSTR* message)
{
    const SigningForm form = signingForm(context, options, signTime);
    assign(message, signMessage(context, pair.in(context), form, messageBytes(data)));
}

inline void signToo(Context& context, int options, const PairArgument& pair, const BINSTR* message,
                    const char* signTime, BINSTR* result)
{
    const SigningForm form = signingForm(context, options, signTime);
    assign(result, addSigner(context, pair.in(context), form, messageBytes(message)));
}

/** Gives a signer to a caller, certificate and time each when it is asked for; the time has dateSize bytes.
 */
inline void storeSigner(const MessageSigner& signer, BINSTR* certificate, char* signTime)
{
    if (certificate)
        assign(certificate, signer.certificate);
    if (signTime)
        copyCut(signer.signTime, dateSize, signTime);
}

/**
 * Verifies a message and gives its content. One that does not carry its content is held against the content
 * that the record has.
 */
inline void verifyData(Context& context, int options, const BINSTR* input, BINSTR* content)
{
    requireOutput(content);
    const auto nothing = [](ByteView) {
    };
    const CmsHandle message = decodeMessage(context.crypto(), messageBytes(input));
    requireKind(message.get(), NID_pkcs7_signed);
    if (const ASN1_OCTET_STRING* carried = carriedContent(message.get())) {
        verifyMessage(context, message.get(), checkedOptions(options), nullptr, nothing);
        assign(content, contentOf(carried));
        return;
    }
    require(content->pData && content->nLen > 0, Code::ContentMissing);
    const BioHandle source = sourceOver(messageBytes(content));
    verifyMessage(context, message.get(), checkedOptions(options), source.get(), nothing);
}

inline void giveSigner(Context& context, int index, BINSTR* certificate, char* signTime)
{
    storeSigner(keptSigner(context, index), certificate, signTime);
}

/** Verifies a message file and gives its first signer. */
inline void verifyFileArguments(Context& context, int options, const char* message, const char* content,
                                ContentPlace place, BINSTR* certificate, char* signTime)
{
    verifyFile(context, checkedOptions(options), pathArgument(message), pathArgument(content), place);
    storeSigner(keptSigner(context, 0), certificate, signTime);
}

inline void signFileArguments(Context& context, int options, const PairArgument& pair, const char* source,
                              const char* signTime, const char* target, bool withContent)
{
    const SigningForm form = signingForm(context, options, signTime);
    const std::string from = pathArgument(source);
    signFile(context, pair.in(context), form, from, pathArgument(target), withContent);
}

inline void envelopeData(Context& context, const BINSTR* recipients, const BINSTR* data, int cipher,
                         BINSTR* message)
{
    assign(message, envelope(context, viewOf(recipients), cipher, messageBytes(data)));
}

inline void openData(Context& context, const PairArgument& pair, const BINSTR* message, BINSTR* data)
{
    requireOutput(data);
    assign(data, openEnvelope(context, messageBytes(message), pair.in(context)));
}

inline void signAndEnvelopeData(Context& context, int options, const PairArgument& pair,
                                const BINSTR* recipients, const BINSTR* data, int cipher, BINSTR* message)
{
    const SigningForm form = signingForm(context, options, nullptr);
    assign(message,
           signAndEnvelope(context, pair.in(context), form, viewOf(recipients), cipher, messageBytes(data)));
}

/** Gives a content that has been verified, and its first signer when it is asked for. */
inline void storeSignedContent(const Context& context, const SecretBytes& content, BINSTR* data,
                               BINSTR* signerCertificate)
{
    BINSTR unwanted = {};
    assignAll({{data, content},
               {signerCertificate ? signerCertificate : &unwanted, keptSigner(context, 0).certificate}});
    release(&unwanted);
}

inline void openSignedData(Context& context, int options, const PairArgument& pair, const BINSTR* message,
                           BINSTR* data, BINSTR* signerCertificate)
{
    requireOutput(data);
    const SecretBytes content =
        openSignedEnvelope(context, messageBytes(message), checkedOptions(options), pair.in(context));
    storeSignedContent(context, content, data, signerCertificate);
}

} // namespace qgtk
