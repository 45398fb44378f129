// Texts for people, in UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host
{
    // A text that came from the air or from a file, fit for a terminal: whatever could steer the terminal or reorder
    // the line (control characters, bidirectional controls, bytes that are not UTF-8) is spelled out, as \x1B or
    // \u202E. A backslash is doubled where it would otherwise read as the beginning of such a spelling.
    std::string Harmless(std::string_view text);

    // The text that Harmless spells so; of any other text, itself.
    std::string FromHarmless(std::string_view shown);

    // A name from there, in quotation marks.
    std::string Quoted(std::string_view name);

    // How many columns of a terminal a harmless text takes.
    std::size_t Columns(std::string_view text);

    // Its beginning, with an ellipsis in place of what does not fit.
    std::string FitColumns(std::string_view text, std::size_t columns);

    // Broken at blanks into lines of so many columns, where a word fits. Each but the last ends with a line feed.
    std::string WrapColumns(std::string_view text, std::size_t columns);

    // FitColumns, filled up with blanks.
    std::string PadColumns(std::string_view text, std::size_t columns);
} // namespace host
