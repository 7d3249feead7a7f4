#pragma once

#include <cstddef>
#include <cstdint>
#include <openssl/crypto.h>
#include <span>
#include <string_view>
#include <vector>

namespace qgtk {

/** A view of bytes that somebody else owns. */
using ByteView = std::span<const std::uint8_t>;

/** Bytes that are no secret. */
using Bytes = std::vector<std::uint8_t>;

/** Allocator that wipes memory before it gives it back, so that a growing or dying vector leaves nothing. */
template <typename T>
struct WipingAllocator
{
    using value_type = T;

    WipingAllocator() = default;
    template <typename U>
    WipingAllocator(const WipingAllocator<U>&)
    {}
    T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }
    void deallocate(T* memory, std::size_t count)
    {
        OPENSSL_cleanse(memory, count * sizeof(T));
        std::allocator<T>().deallocate(memory, count);
    }
    bool operator==(const WipingAllocator&) const { return true; }
};

/** Bytes of a private key, a password or a key derived from one. Wiped wherever they lie. */
using SecretBytes = std::vector<std::uint8_t, WipingAllocator<std::uint8_t>>;

/** The bytes of a text, without a terminator. */
inline ByteView bytesOf(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/** Bytes as a text, byte for byte. */
inline std::string_view textOf(ByteView bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace qgtk
