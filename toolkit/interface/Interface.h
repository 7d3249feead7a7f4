#pragma once

#include <memory>

#include "toolkit/core/AlgorithmCodes.h"
#include "toolkit/core/Base64.h"
#include "toolkit/core/Call.h"
#include "toolkit/core/CertificateList.h"
#include "toolkit/core/Identity.h"
#include "toolkit/core/KeyOperations.h"
#include "toolkit/core/KeyPair.h"
#include "toolkit/core/KeyRandom.h"
#include "toolkit/core/Media.h"

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
