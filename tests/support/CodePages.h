// Texts in code pages, by the system's own conversion.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace test
{
    inline std::string In(UINT codePage, std::wstring_view text)
    {
        auto const length = static_cast<int>(text.size());
        std::string bytes(4 * text.size(), '\0');
        auto const size = WideCharToMultiByte(codePage, 0, text.data(), length, bytes.data(),
                                              static_cast<int>(bytes.size()), nullptr, nullptr);
        bytes.resize(static_cast<std::size_t>(size));
        return bytes;
    }

    inline std::wstring Wide(UINT codePage, std::string_view text)
    {
        std::wstring wide(text.size(), L'\0');
        auto const size = MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                                              static_cast<int>(wide.size()));
        wide.resize(static_cast<std::size_t>(size));
        return wide;
    }
} // namespace test
