#include "toolkit/core/BinStr.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <new>

#include "toolkit/core/Errors.h"

namespace qgtk {

ByteView viewOf(const BINSTR* input)
{
    require(input && input->pData && input->nLen > 0, Code::BadArgument);
    return {input->pData, static_cast<std::size_t>(input->nLen)};
}

void release(BINSTR* record)
{
    // The length is the caller's to change; the allocator knows how much there really is to wipe.
    if (record->pData)
        OPENSSL_cleanse(record->pData, malloc_usable_size(record->pData));
    std::free(record->pData);
    *record = BINSTR{};
}

void assign(BINSTR* output, ByteView bytes)
{
    require(output != nullptr && bytes.size() < INT_MAX, Code::BadArgument);
    auto* copy = static_cast<unsigned char*>(std::malloc(bytes.size() + 1));
    if (!copy)
        throw std::bad_alloc();
    std::memcpy(copy, bytes.data(), bytes.size());
    copy[bytes.size()] = 0;
    release(output);
    *output = BINSTR{copy, static_cast<int>(bytes.size())};
}

} // namespace qgtk
