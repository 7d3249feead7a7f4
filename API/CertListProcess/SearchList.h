#pragma once

#include <memory>
#include <new>

/**
 * One array of the file search. It knows its own length, since the counts that the host is told are set to 0
 * by a later step while the array stays.
 */
template <typename Record>
class SearchList
{
public:
    /** Frees the array. */
    void reset()
    {
        m_records.reset();
        m_length = 0;
    }

    /** Makes a zeroed array in the place of the earlier one. False when memory is short. */
    bool allocate(int length)
    {
        reset();
        m_records.reset(new (std::nothrow) Record[static_cast<size_t>(length)]());
        if (m_records)
            m_length = length;
        return m_records != nullptr;
    }

    /** True once there is an array, whatever the search that made it has come to. */
    explicit operator bool() const { return m_records != nullptr; }

    Record* get() const { return m_records.get(); }

    /** Null for an index outside the array. */
    const Record* at(int index) const
    {
        return index >= 0 && index < m_length ? &m_records[static_cast<size_t>(index)] : nullptr;
    }

private:
    std::unique_ptr<Record[]> m_records;
    int m_length = 0;
};
