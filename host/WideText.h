#pragma once

#include <string>
#include <string_view>

namespace host
{
    std::string ToUtf8(std::wstring_view text);
    std::wstring ToUtf16(std::string_view text);
} // namespace host
