#pragma once

#include <string>
#include <vector>

namespace vorlink
{
    // The pieces of `text` between the matches of `delimiter`, a regular expression (ECMAScript). A text
    // without a match is one piece; a delimiter at the very end gives no empty last piece. On an error, such
    // as a malformed pattern, writes "error:" and its text to standard output and returns nothing.
    std::vector<std::string> SplitText(std::string const& text, std::string const& delimiter);
} // namespace vorlink
