#include "pairing/SplitText.h"

#include <exception>
#include <iostream>
#include <regex>

namespace vorlink
{
    std::vector<std::string> SplitText(std::string const& text, std::string const& delimiter)
    {
        constexpr int betweenMatches = -1;
        try
        {
            std::regex const pattern(delimiter);
            return {std::sregex_token_iterator(text.begin(), text.end(), pattern, betweenMatches),
                    std::sregex_token_iterator()};
        }
        catch (std::exception const& error)
        {
            std::cout << "error:" << error.what() << std::endl;
            return {};
        }
    }
} // namespace vorlink
