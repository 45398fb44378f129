#pragma once

#include <string>
#include <string_view>

namespace vorlink
{
    // Makes `text` all that a file holds. Whoever ends meanwhile leaves the old file or the new one, each whole: a
    // second file is written beside it and takes its place in one step. Where the system refuses one of these, the
    // file is written over in place. A text that the disk has no room for changes nothing. Nothing is reported.
    void ReplaceFileText(std::string const& fileName, std::string_view text);
} // namespace vorlink
