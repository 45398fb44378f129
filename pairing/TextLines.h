#pragma once

#include <istream>
#include <string>
#include <string_view>

namespace vorlink
{
    // What the stream's file holds at this moment; nothing of one that is not open.
    std::string ReadWhole(std::istream& file);

    // Takes the next line off `rest`, a file's text with its bytes as they are: a carriage return before the line feed
    // is not part of the line, whoever wrote the file. False at the end.
    bool TakeTextLine(std::string_view& rest, std::string_view& line);
} // namespace vorlink
