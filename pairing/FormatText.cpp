#include "pairing/FormatText.h"

#include <cstddef>

namespace vorlink
{
    std::string FormatWithoutArguments(std::string_view format)
    {
        std::string text;
        for (std::size_t i = 0; i < format.size(); ++i)
        {
            text += format[i];
            if (format.substr(i, 2) == "%%")
            {
                ++i;
            }
        }
        return text;
    }
} // namespace vorlink
