#pragma once

#include <string>
#include <string_view>

namespace host
{
    std::string ToUtf8(std::wstring_view text);

    // A text that came from the air or from a file, fit for a terminal: whatever could steer the terminal or
    // reorder the line (control characters, bidirectional controls, bytes that are not UTF-8) is spelled out.
    std::string Harmless(std::string_view text);

    // A name from there, in quotation marks.
    std::string Quoted(std::string_view name);
} // namespace host
