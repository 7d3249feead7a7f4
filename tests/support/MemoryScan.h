#pragma once

#include <string>
#include <vector>

/**
 * Looks for byte strings in the writable memory of this process.
 *
 * The needles themselves would be found in the searcher's own memory, so they are kept masked: each byte is
 * stored exclusive-or'ed with a constant and compared so.
 */
class MemoryScan
{
public:
    /** Masks the needle into the object; the caller wipes its own copy. name is what a hit is reported as. */
    void add(const std::string& name, const char* needle, std::size_t length);

    /** "name at region" of every hit, in the order of the address space. */
    std::vector<std::string> find() const;

private:
    struct Needle
    {
        std::string name;
        std::vector<unsigned char> masked;
    };
    std::vector<Needle> m_needles;
};
