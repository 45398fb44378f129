#include "host/WideText.h"

#include <windows.h>

#include <cstddef>

namespace host
{
    std::string ToUtf8(std::wstring_view text)
    {
        int const length = static_cast<int>(text.size());
        int const size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
        std::string utf8(static_cast<std::size_t>(size), '\0');
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), size, nullptr, nullptr);
        return utf8;
    }

    std::wstring ToUtf16(std::string_view text)
    {
        int const length = static_cast<int>(text.size());
        int const size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
        std::wstring utf16(static_cast<std::size_t>(size), L'\0');
        MultiByteToWideChar(CP_UTF8, 0, text.data(), length, utf16.data(), size);
        return utf16;
    }
} // namespace host
