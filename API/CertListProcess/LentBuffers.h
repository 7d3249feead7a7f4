#pragma once

/**
 * A buffer that a store or the session handed out to the session's own code: given back to it, which wipes
 * the bytes and logs so.
 */
template <typename Owner>
struct LentBuffer
{
    explicit LentBuffer(Owner& lender) : owner(lender) {}
    ~LentBuffer()
    {
        void* bytes = data;
        if (bytes)
            owner.MemFree(&bytes);
    }
    LentBuffer(const LentBuffer&) = delete;
    LentBuffer& operator=(const LentBuffer&) = delete;

    /** True when there are bytes. */
    bool holds() const { return data && length >= 1; }

    Owner& owner;
    char* data = nullptr;
    int length = 0;
};

/** The four buffers of a PFX file. */
template <typename Owner>
struct LentPairs
{
    explicit LentPairs(Owner& lender) : signCert(lender), signKey(lender), kmCert(lender), kmKey(lender) {}

    LentBuffer<Owner> signCert;
    LentBuffer<Owner> signKey;
    LentBuffer<Owner> kmCert;
    LentBuffer<Owner> kmKey;
};
