#include "pairing/TextLines.h"

namespace vorlink
{
    bool ReadTextLine(std::istream& text, std::string& line)
    {
        if (!std::getline(text, line))
        {
            return false;
        }
        bool const endsInLineFeed = !text.eof();
        if (endsInLineFeed && line.ends_with('\r'))
        {
            line.pop_back();
        }
        return true;
    }
} // namespace vorlink
