#include "pairing/SplitText.h"

#include <exception>
#include <iostream>
#include <regex>
#include <string_view>

namespace vorlink
{
    namespace
    {
        // What means something to a regular expression. A delimiter without any of it stands for itself, and to compile
        // one takes longer than to split by it.
        constexpr std::string_view meaningful("^$\\.*+?()[]{}|\0", 15);

        bool StandsForItself(std::string_view delimiter)
        {
            return !delimiter.empty() && delimiter.find_first_of(meaningful) == std::string_view::npos;
        }

        std::vector<std::string> SplitPlain(std::string_view text, std::string_view delimiter)
        {
            std::vector<std::string> pieces;
            std::size_t begin = 0;
            for (auto end = text.find(delimiter); end != std::string_view::npos; end = text.find(delimiter, begin))
            {
                pieces.emplace_back(text.substr(begin, end - begin));
                begin = end + delimiter.size();
            }
            if (begin < text.size() || pieces.empty())
            {
                pieces.emplace_back(text.substr(begin));
            }
            return pieces;
        }
    } // namespace

    std::vector<std::string> SplitText(std::string const& text, std::string const& delimiter)
    {
        constexpr int betweenMatches = -1;
        try
        {
            if (StandsForItself(delimiter))
            {
                return SplitPlain(text, delimiter);
            }
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
