#pragma once

#include <istream>
#include <string>

namespace vorlink
{
    // Reads one line, as std::getline does, from a stream opened in binary mode: a carriage return before
    // the line feed is not part of the line, whoever wrote the file.
    bool ReadTextLine(std::istream& text, std::string& line);
} // namespace vorlink
