#pragma once

#include <openssl/err.h>
#include <string>
#include <vector>

namespace qgtk {

/**
 * Puts the errors that the host left in the thread's queue back after functions that clear them all, with the
 * mark of the running operation.
 */
class ErrorQueueKeeper
{
public:
    ErrorQueueKeeper()
    {
        ERR_pop_to_mark();
        const char* file = nullptr;
        const char* function = nullptr;
        const char* data = nullptr;
        for (Entry entry;
             (entry.code = ERR_get_error_all(&file, &entry.line, &function, &data, &entry.flags)) != 0;) {
            entry.file = file;
            entry.function = function;
            entry.data = data;
            m_entries.push_back(entry);
        }
    }
    ~ErrorQueueKeeper()
    {
        ERR_clear_error();
        for (const Entry& entry : m_entries) {
            ERR_new();
            ERR_set_debug(entry.file.c_str(), entry.line, entry.function.c_str());
            ERR_set_error(ERR_GET_LIB(entry.code), ERR_GET_REASON(entry.code),
                          (entry.flags & ERR_TXT_STRING) != 0 ? "%s" : nullptr, entry.data.c_str());
        }
        ERR_set_mark();
    }
    ErrorQueueKeeper(const ErrorQueueKeeper&) = delete;
    ErrorQueueKeeper& operator=(const ErrorQueueKeeper&) = delete;

private:
    struct Entry
    {
        unsigned long code = 0;
        int line = 0;
        int flags = 0;
        std::string file;
        std::string function;
        std::string data;
    };
    std::vector<Entry> m_entries;
};

} // namespace qgtk
