#pragma once

#include <cstddef>
#include <cstring>
#include <new>
#include <string.h>
#include <type_traits>
#include <utility>

/** Overwrites memory with zeros in a way that the compiler may not drop. Null is passed over. */
inline void wipe(void* data, std::size_t size)
{
    if (data)
        explicit_bzero(data, size);
}

/** Wipes a whole array or plain record. */
template <typename T>
requires(!std::is_pointer_v<T>) void wipe(T& object)
{
    static_assert(std::is_trivially_copyable_v<T>, "wiping would destroy an object with a life of its own");
    wipe(&object, sizeof(object));
}

/** Wipes a zero-terminated text up to its terminator. Null is passed over. */
inline void wipeText(char* text)
{
    if (text)
        wipe(text, std::strlen(text));
}

/** Wipes an array or plain record, which belongs to someone else, when the scope ends. */
template <typename T>
class ScopedWipe
{
public:
    explicit ScopedWipe(T& object) : m_object(object) {}
    ~ScopedWipe() { wipe(m_object); }
    ScopedWipe(const ScopedWipe&) = delete;
    ScopedWipe& operator=(const ScopedWipe&) = delete;

private:
    T& m_object;
};

/**
 * Owns bytes that are wiped before they are freed: passwords, plain keys, key randoms.
 *
 * There is always one zero byte behind the data, so that text can be used as it stands. When memory runs out
 * the buffer is empty and false; nothing throws.
 */
class SecretBuffer
{
public:
    SecretBuffer() = default;

    /** `size` zeroed bytes. */
    explicit SecretBuffer(std::size_t size)
        : m_data(new (std::nothrow) char[size + 1]()), m_size(m_data ? size : 0)
    {}

    /** A copy of `size` bytes. */
    SecretBuffer(const void* data, std::size_t size) : SecretBuffer(size)
    {
        if (m_size > 0)
            std::memcpy(m_data, data, m_size);
    }

    ~SecretBuffer() { clear(); }
    SecretBuffer(const SecretBuffer&) = delete;
    SecretBuffer& operator=(const SecretBuffer&) = delete;
    SecretBuffer(SecretBuffer&& other) noexcept { swap(other); }
    SecretBuffer& operator=(SecretBuffer&& other) noexcept
    {
        clear();
        swap(other);
        return *this;
    }

    /** False for a buffer that was never made, was given away, or could not be allocated. */
    explicit operator bool() const { return m_data != nullptr; }
    char* data() { return m_data; }
    const char* data() const { return m_data; }
    std::size_t size() const { return m_size; }

    /** Wipes and frees the bytes. */
    void clear()
    {
        wipe(m_data, m_size);
        delete[] m_data;
        m_data = nullptr;
        m_size = 0;
    }

    /** Hands the bytes to the caller, who wipes them and frees them with delete[]. */
    char* release()
    {
        m_size = 0;
        return std::exchange(m_data, nullptr);
    }

private:
    void swap(SecretBuffer& other) noexcept
    {
        std::swap(m_data, other.m_data);
        std::swap(m_size, other.m_size);
    }

    char* m_data = nullptr;
    std::size_t m_size = 0;
};
