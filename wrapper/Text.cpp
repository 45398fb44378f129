#include "wrapper/Text.h"

#include <windows.h>

namespace wrapper
{
    std::string ToUtf8(std::wstring_view text)
    {
        auto const length = static_cast<int>(text.size());
        int const size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
        std::string utf8(static_cast<std::size_t>(size), '\0');
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), size, nullptr, nullptr);
        return utf8;
    }

    bool IsUtf8(char const* text)
    {
        return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, -1, nullptr, 0) != 0;
    }
} // namespace wrapper
