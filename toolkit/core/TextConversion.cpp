#include "toolkit/core/TextConversion.h"

#include <iconv.h>

namespace qgtk {

namespace {

class Converter
{
public:
    Converter(const char* to, const char* from) : m_handle(iconv_open(to, from)) {}
    ~Converter()
    {
        if (isOpen())
            iconv_close(m_handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return m_handle != iconv_t(-1); }
    iconv_t handle() const { return m_handle; }

private:
    iconv_t m_handle;
};

} // namespace

std::optional<SecretBytes> convertText(const char* to, const char* from, ByteView text)
{
    constexpr std::size_t largestGrowth = 4;
    constexpr auto failed = static_cast<std::size_t>(-1);
    const Converter converter(to, from);
    if (!converter.isOpen())
        return std::nullopt;
    SecretBytes converted(text.size() * largestGrowth);
    char* source = const_cast<char*>(textOf(text).data());
    char* target = reinterpret_cast<char*>(converted.data());
    std::size_t sourceLeft = text.size();
    std::size_t targetLeft = converted.size();
    if (iconv(converter.handle(), &source, &sourceLeft, &target, &targetLeft) == failed || sourceLeft > 0)
        return std::nullopt;
    converted.resize(converted.size() - targetLeft);
    return converted;
}

} // namespace qgtk
