// Texts at the boundary: HSTRING outside, UTF-8 inside.
#pragma once

#include "platform/abi/Foundation.h"

#include <string>
#include <string_view>

namespace simulator
{
    std::string FromHstring(HSTRING text);
    HRESULT MakeHstring(std::string_view text, HSTRING* result);
    std::wstring Widen(std::string_view utf8);
    std::string Narrow(std::wstring_view text);
} // namespace simulator
