#pragma once

#include <string>

/**
 * Looks for bytes in the writable memory of the process. The needle is kept masked, so that neither it nor
 * the search leaves what is looked for in memory.
 */
class Needle
{
public:
    /** Takes bytes that are masked already: each XOR MASK. */
    explicit Needle(std::string masked) : m_masked(std::move(masked)) {}

    /** Number of places where the bytes stand. */
    int count() const;

    static constexpr unsigned char MASK = 0xA5;

    /** Masks or unmasks bytes in place. */
    static void mask(char* data, size_t size);

private:
    int countIn(const unsigned char* begin, const unsigned char* end) const;

    std::string m_masked;
};
