#pragma once

#include "Secret.h"
#include "quillgate/returncodes.h"
#include "quillgate/toolkit.h"

/**
 * Owner of one toolkit byte string.
 *
 * The bytes belong to the toolkit; they are wiped before they are given back, since most of them are keys
 * and not every toolkit wipes what it frees.
 */
class ToolkitBytes
{
public:
    /** Creates the string through a toolkit context, which must outlive this object. */
    explicit ToolkitBytes(void* toolkit) : m_toolkit(toolkit) { ZR_BINSTR_Create(m_toolkit, &m_bytes); }

    ~ToolkitBytes()
    {
        if (size() > 0)
            wipe(m_bytes.pData, static_cast<size_t>(m_bytes.nLen));
        ZR_BINSTR_Delete(m_toolkit, &m_bytes);
    }

    ToolkitBytes(const ToolkitBytes&) = delete;
    ToolkitBytes& operator=(const ToolkitBytes&) = delete;

    /** Gives the toolkit a copy of the bytes. A length below 1 is refused with 10004 and leaves the string
     * empty. */
    int set(const char* data, int length)
    {
        if (length < 1)
            return QG_BAD_ARGUMENT;
        auto* bytes = const_cast<unsigned char*>(reinterpret_cast<const unsigned char*>(data));
        return ZR_BINSTR_SetData(m_toolkit, bytes, length, &m_bytes);
    }

    /** The record for toolkit calls, as input or output. */
    BINSTR* get() { return &m_bytes; }

    /** The bytes, or null; valid until the next toolkit call on this object. */
    const char* data() const { return reinterpret_cast<const char*>(m_bytes.pData); }

    /** Number of bytes; 0 for an empty string and for one whose length makes no sense. */
    int size() const { return m_bytes.pData && m_bytes.nLen > 0 ? m_bytes.nLen : 0; }

private:
    void* m_toolkit;
    BINSTR m_bytes{};
};
