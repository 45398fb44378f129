#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vorlink
{
    // Tries it anew for a fifth of a second, for another process that loads or saves has a file for a moment only.
    // False when it has not succeeded.
    bool TryForAMoment(std::function<bool()> const& action);

    // Makes `text` all that a file holds. Whoever ends meanwhile leaves the old file or the new one, each whole: a
    // second file is written beside it and takes its place in one step. Where the system refuses one of these, and
    // the second for a moment, the file is written over in place. A text that the disk has no room for changes nothing.
    // Nothing is reported.
    void ReplaceFileText(std::string const& fileName, std::string_view text);
} // namespace vorlink
