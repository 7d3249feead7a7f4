#include "toolkit/core/BinStr.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <memory>
#include <mutex>
#include <new>
#include <unordered_set>
#include <utility>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

/** The addresses that assign handed out and release has not taken back. */
class HandedOut
{
public:
    void add(void* bytes)
    {
        const std::lock_guard lock(m_mutex);
        m_addresses.insert(bytes);
    }

    /** True when the address was one of ours; it no longer is. */
    bool remove(void* bytes)
    {
        const std::lock_guard lock(m_mutex);
        return m_addresses.erase(bytes) > 0;
    }

private:
    std::mutex m_mutex;
    std::unordered_set<void*> m_addresses;
};

HandedOut& handedOut()
{
    static HandedOut addresses;
    return addresses;
}

struct FreeBytes
{
    void operator()(unsigned char* bytes) const { std::free(bytes); }
};

/** A record of our own, released when it goes. */
class OwnRecord
{
public:
    explicit OwnRecord(ByteView bytes) { assign(&m_record, bytes); }
    ~OwnRecord() { release(&m_record); }
    OwnRecord(OwnRecord&& other) noexcept : m_record(std::exchange(other.m_record, {})) {}
    OwnRecord(const OwnRecord&) = delete;
    OwnRecord& operator=(const OwnRecord&) = delete;

    /** Gives the bytes to a caller's record. */
    void moveTo(BINSTR* output)
    {
        release(output);
        *output = std::exchange(m_record, {});
    }

private:
    BINSTR m_record = {};
};

} // namespace

ByteView viewOf(const BINSTR* input)
{
    require(input && input->pData && input->nLen > 0, Code::BadArgument);
    return {input->pData, static_cast<std::size_t>(input->nLen)};
}

void release(BINSTR* record)
{
    // The length is the caller's to change; the allocator knows how much there really is to wipe.
    if (handedOut().remove(record->pData)) {
        OPENSSL_cleanse(record->pData, malloc_usable_size(record->pData));
        std::free(record->pData);
    }
    *record = BINSTR{};
}

void assign(BINSTR* output, ByteView bytes)
{
    require(output != nullptr && bytes.size() < INT_MAX, Code::BadArgument);
    if (bytes.empty()) {
        // Callers release no record without a length: memory behind it would be lost.
        release(output);
        return;
    }
    std::unique_ptr<unsigned char, FreeBytes> copy(
        static_cast<unsigned char*>(std::malloc(bytes.size() + 1)));
    if (!copy)
        throw std::bad_alloc();
    std::memcpy(copy.get(), bytes.data(), bytes.size());
    copy.get()[bytes.size()] = 0;
    handedOut().add(copy.get());
    release(output);
    *output = BINSTR{copy.release(), static_cast<int>(bytes.size())};
}

void assignAll(std::span<const Output> outputs)
{
    std::vector<OwnRecord> records;
    for (const Output& output : outputs) {
        require(output.record != nullptr, Code::BadArgument);
        records.emplace_back(output.bytes);
    }
    auto record = records.begin();
    for (const Output& output : outputs)
        (record++)->moveTo(output.record);
}

} // namespace qgtk
