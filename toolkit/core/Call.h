#pragma once

#include <openssl/err.h>

#include "toolkit/core/BinStr.h"
#include "toolkit/core/CertificateText.h"
#include "toolkit/core/Registry.h"

namespace qgtk {

/** Leaves the thread's OpenSSL error queue as it was found. */
class ErrorQueueMark
{
public:
    ErrorQueueMark() { ERR_set_mark(); }
    ~ErrorQueueMark() { ERR_pop_to_mark(); }
    ErrorQueueMark(const ErrorQueueMark&) = delete;
    ErrorQueueMark& operator=(const ErrorQueueMark&) = delete;
};

/** Runs an operation, turns whatever it throws into a code and gives code and detail to a keeper. */
template <typename Operation, typename Keeper>
int guarded(Operation&& operation, Keeper&& keep) noexcept
{
    const ErrorQueueMark mark;
    Code code = Code::Internal;
    try {
        operation();
        return 0;
    } catch (const Failure& failure) {
        keep(code = failure.code(), failure.detail());
    } catch (const std::bad_alloc&) {
        keep(code = Code::OutOfMemory, std::string());
    } catch (...) {
        keep(code, std::string());
    }
    return static_cast<int>(code);
}

/** An operation that has no context. */
template <typename Operation>
int call(Operation&& operation) noexcept
{
    return guarded(operation, [](Code, const std::string&) {});
}

/** An operation on a caller's context, which keeps the failure. NoContext for a pointer that is none of ours.
 */
template <typename Operation>
int callOn(void* handle, Operation&& operation) noexcept
{
    Context* context = nullptr;
    const int found = call([&] {
        context = Registry::instance().find(handle);
        require(context != nullptr, Code::NoContext);
    });
    if (found != 0)
        return found;
    return guarded([&] { operation(*context); },
                   [&](Code code, const std::string& detail) { context->note(code, detail); });
}

/** A caller's text; a null pointer is an empty one. */
inline std::string_view textArgument(const char* text)
{
    return text ? std::string_view(text) : std::string_view();
}

/** A caller's path. Throws BadArgument when it is null or empty. */
inline std::string pathArgument(const char* path)
{
    require(path && *path, Code::BadArgument);
    return path;
}

/** Gives a caller's output a value. Throws BadArgument when it is null. */
template <typename T>
void store(T* output, T value)
{
    require(output != nullptr, Code::BadArgument);
    *output = value;
}

} // namespace qgtk
