#pragma once

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <openssl/crypto.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include "MemoryScan.h"
#include "quillgate/binstr.h"

/** Bytes of a file, at most 4,096, read without a library's buffers in between and wiped at the end. Throws
 * when there is no such file or it is empty. */
class RawFile
{
public:
    explicit RawFile(const std::string& path)
    {
        const int descriptor = open(path.c_str(), O_RDONLY);
        m_length = read(descriptor, m_bytes.data(), m_bytes.size());
        close(descriptor);
        if (m_length <= 0)
            throw std::runtime_error("can't read " + path);
    }
    ~RawFile() { wipe(); }
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;

    void wipe() { OPENSSL_cleanse(m_bytes.data(), m_bytes.size()); }
    BINSTR record() { return {m_bytes.data(), static_cast<int>(m_length)}; }
    char* text() { return reinterpret_cast<char*>(m_bytes.data()); }
    std::size_t length() const { return static_cast<std::size_t>(m_length); }

private:
    std::array<unsigned char, 4096> m_bytes{};
    ssize_t m_length = 0;
};

/** Bytes at the beginning of a block that the allocator writes over when it is freed: they tell nothing. */
inline constexpr std::size_t lostWhenFreed = 16;

/**
 * A scan for part of what a record or file holds: the middle, where the private part of a key lies, and
 * nothing of the beginning, so that copies are found which were freed and not wiped.
 */
inline MemoryScan scanFor(const char* name, const BINSTR& record)
{
    constexpr std::size_t needleLength = 24;
    MemoryScan scan;
    const auto length = static_cast<std::size_t>(record.nLen);
    const std::size_t middle = (length - std::min(length, needleLength)) / 2;
    const std::size_t start = std::max(middle, std::min(lostWhenFreed, length / 2));
    scan.add(name,
             {reinterpret_cast<const char*>(record.pData) + start, std::min(length - start, needleLength)});
    return scan;
}
