#include "toolkit/core/Errors.h"

namespace qgtk {

const char* textOfCode(Code code, Language language)
{
    const bool korean = language == Language::Korean;
    // No default: the compiler names a code that has no text.
    switch (code) {
#define QGTK_CODE_TEXT(name, number, english, koreanText)                                                    \
    case Code::name:                                                                                         \
        return korean ? (koreanText) : (english);
        QGTK_CODES(QGTK_CODE_TEXT)
#undef QGTK_CODE_TEXT
    }
    return "";
}

const char* Failure::what() const noexcept
{
    return textOfCode(m_code, Language::English);
}

} // namespace qgtk
