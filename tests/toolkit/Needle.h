#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <openssl/crypto.h>
#include <string>
#include <unistd.h>
#include <vector>

/** Part of a secret, kept under a mask so that the search does not find itself. */
class Needle
{
public:
    Needle(const char* secret, std::size_t length) : m_masked(length)
    {
        for (std::size_t i = 0; i < length; ++i)
            m_masked[i] = static_cast<char>(secret[i] ^ mask);
    }

    /** How often it stands in the writable memory of the process. */
    int count() const
    {
        int found = 0;
        std::ifstream maps("/proc/self/maps");
        for (std::string line; std::getline(maps, line);) {
            std::uintptr_t start = 0;
            std::uintptr_t end = 0;
            char rights[5] = {};
            if (std::sscanf(line.c_str(), "%lx-%lx %4s", &start, &end, rights) == 3 && rights[1] == 'w')
                found += countIn(reinterpret_cast<const volatile char*>(start), end - start);
        }
        return found;
    }

private:
    static constexpr char mask = 0x5A;

    bool standsAt(const volatile char* place) const
    {
        for (std::size_t i = 0; i < m_masked.size(); ++i)
            if (static_cast<char>(place[i] ^ mask) != m_masked[i])
                return false;
        return true;
    }
    int countIn(const volatile char* start, std::size_t length) const
    {
        int found = 0;
        for (std::size_t i = 0; i + m_masked.size() <= length; ++i)
            found += standsAt(start + i) ? 1 : 0;
        return found;
    }

    std::vector<char> m_masked;
};

/** Reads a small file without a library's buffers in between. */
inline std::size_t readInto(const std::string& path, char* buffer, std::size_t size)
{
    const int file = open(path.c_str(), O_RDONLY);
    const ssize_t count = read(file, buffer, size);
    close(file);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

/** A needle out of a file's middle, where the private part of a key lies. */
inline Needle needleOf(const std::string& path, std::size_t offset, std::size_t length)
{
    std::array<char, 4096> buffer{};
    readInto(path, buffer.data(), buffer.size());
    const Needle needle(buffer.data() + offset, length);
    OPENSSL_cleanse(buffer.data(), buffer.size());
    return needle;
}
