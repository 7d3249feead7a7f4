#pragma once

#include <string>
#include <utility>
#include <vector>

/**
 * Bytes that are looked for in memory. They are kept masked, each exclusive-or'ed with a constant, and
 * compared so: neither they nor the search leave what is looked for in memory.
 */
class Needle
{
public:
    Needle() = default;

    /** Masks the bytes into the object; the caller wipes its own copy. */
    Needle(const char* secret, std::size_t length);

    /** Takes bytes that are masked already. */
    static Needle ofMasked(const std::string& masked);

    const std::string& masked() const { return m_masked; }

    /** Number of places in the writable memory of this process where the bytes stand. */
    int count() const;

    static constexpr unsigned char MASK = 0xA5;

    /** Masks or unmasks bytes in place. */
    static void mask(char* data, std::size_t length);

private:
    std::string m_masked;
};

/** Looks for several in one pass over the writable memory of this process. */
class MemoryScan
{
public:
    /** name is what a hit is reported as. The needle holds a byte at least. */
    void add(const std::string& name, const Needle& needle) { m_needles.emplace_back(name, needle); }

    /** "name in region" of every hit, in the order of the address space. */
    std::vector<std::string> find() const;

private:
    std::vector<std::pair<std::string, Needle>> m_needles;
};
