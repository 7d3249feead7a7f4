#pragma once

#include <memory>

#include "toolkit/core/AlgorithmCodes.h"
#include "toolkit/core/Base64.h"
#include "toolkit/core/Call.h"
#include "toolkit/core/CertificateList.h"
#include "toolkit/core/CertificatePath.h"
#include "toolkit/core/Identity.h"
#include "toolkit/core/KeyOperations.h"
#include "toolkit/core/KeyPair.h"
#include "toolkit/core/KeyRandom.h"
#include "toolkit/core/Media.h"
#include "toolkit/core/Verification.h"

/**
 * Declares and begins an operation of an interface, by its name behind the prefix. The prefix is QGTK_PREFIX,
 * which the including source defines.
 */
#define QGTK_JOIN_NAMES(prefix, name) prefix##name
#define QGTK_JOIN(prefix, name) QGTK_JOIN_NAMES(prefix, name)
#define QGTK_OPERATION(name)                                                                                 \
    extern "C" __attribute__((visibility("default"))) int QGTK_JOIN(QGTK_PREFIX, name)

namespace qgtk {

/** Writes the text of a field of the loaded certificate, cut to the buffer. */
inline int getText(void* handle, int size, char* buffer, CertificateGetter getter) noexcept
{
    return callOn(handle, [&](Context& context) {
        copyCut(getter(context.certificate(), context.charset()), size, buffer);
    });
}

/** A caller's buffer and the text that is to stand in it. */
struct TextOutput
{
    std::string text;
    int size;
    char* buffer;
};

/** Writes several texts, each cut to its buffer: all or none. Throws BadArgument as copyCut. */
inline void copyAllCut(std::initializer_list<TextOutput> outputs)
{
    for (const TextOutput& output : outputs)
        require(output.buffer && output.size > 0, Code::BadArgument);
    for (const TextOutput& output : outputs)
        copyCut(output.text, output.size, output.buffer);
}

/** Callers hand buffers for a date without their size; they are at least so large. */
inline constexpr int dateSize = 25;

/** What CERT_Verify of both libraries has in common. */
inline VerifyRequest verifyRequest(Context& context, int certificateType, const char* policies, bool sign,
                                   const BINSTR* signerCertificate, const BINSTR* signerKey)
{
    VerifyRequest request;
    request.use = certificateUseOf(certificateType);
    request.policies = textArgument(policies);
    if (sign)
        request.signer = requestSigner(context.crypto(), viewOf(signerCertificate), viewOf(signerKey));
    return request;
}

/** Replaces what a caller sets first of all; what servers gave is forgotten. */
inline void setVerification(Context& context, bool wholeChain, StatusSource source, bool keepReplies,
                            const char* ocspUrl)
{
    VerifySettings& settings = context.verifySettings;
    settings.wholeChain = wholeChain;
    settings.source = source;
    settings.keepReplies = keepReplies;
    settings.ocspUrl = textArgument(ocspUrl);
    context.replies.clear();
}

/** Gives date and reason of a revocation to a caller, each when it is asked for. */
inline void storeRevocation(const RevocationEntry& entry, char* date, int* reason)
{
    if (date)
        copyCut(entry.date, dateSize, date);
    if (reason)
        *reason = entry.reason;
}

/** Runs a status check and gives what it found about a revocation, also when that is why it throws. */
template <typename Check>
void reportRevocation(Check&& check, const RevocationEntry& entry, char* date, int* reason)
{
    try {
        check();
    } catch (const Failure& failure) {
        if (failure.code() == Code::CertRevoked)
            storeRevocation(entry, date, reason);
        throw;
    }
    storeRevocation(entry, date, reason);
}

/** Throws BadArgument without a record for the result: before any work, most of all before a server is asked.
 */
inline void requireOutput(const BINSTR* output)
{
    require(output != nullptr, Code::BadArgument);
}

/** The bytes of an optional input. */
inline Bytes optionalBytes(const BINSTR* input)
{
    if (!input || !input->pData || input->nLen == 0)
        return {};
    const ByteView bytes = viewOf(input);
    return {bytes.begin(), bytes.end()};
}

/** Fetches an object of a kind by its address. */
inline int fetchByAddress(void* handle, int dataType, const char* url, BINSTR* data) noexcept
{
    return callOn(handle, [&](Context& context) {
        requireOutput(data);
        ServerAccess servers(context);
        assign(data, servers.network.fetch(pathArgument(url), objectKindOf(dataType)).front());
    });
}

/** Fetches the revocation list that covers a certificate. */
inline int fetchListFor(void* handle, const BINSTR* certificate, BINSTR* list) noexcept
{
    return callOn(handle, [&](Context& context) {
        requireOutput(list);
        const X509Handle asked = decodeX509(context.crypto(), viewOf(certificate));
        ServerAccess servers(context);
        assign(list, fetchRevocationList(context, servers, asked.get()));
    });
}

/** Makes a context over a configuration file in a work directory and stores the caller's pointer to it. */
inline int initialise(void** handle, const char* workDirectory, const char* configurationName) noexcept
{
    return call([&] {
        require(handle != nullptr, Code::BadArgument);
        const std::string directory = pathArgument(workDirectory);
        *handle = Registry::instance().add(std::make_unique<Context>(directory + "/" + configurationName));
    });
}

} // namespace qgtk
