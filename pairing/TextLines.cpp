#include "pairing/TextLines.h"

#include <cstddef>

namespace vorlink
{
    std::string ReadWhole(std::istream& file)
    {
        std::string text;
        file.seekg(0, std::ios::end);
        if (auto const size = file.tellg(); size > 0)
        {
            text.resize(static_cast<std::size_t>(size));
            file.seekg(0);
            file.read(text.data(), size);
            text.resize(static_cast<std::size_t>(file.gcount()));
        }
        return text;
    }

    bool TakeTextLine(std::string_view& rest, std::string_view& line)
    {
        if (rest.empty())
        {
            return false;
        }
        auto const end = rest.find('\n');
        line = rest.substr(0, end);
        if (end == std::string_view::npos)
        {
            rest = {};
            return true;
        }
        rest.remove_prefix(end + 1);
        if (line.ends_with('\r'))
        {
            line.remove_suffix(1);
        }
        return true;
    }
} // namespace vorlink
