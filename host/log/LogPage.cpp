#include "host/log/LogPage.h"

#include "host/log/LogPageData.h"
#include "host/log/LogPageTexts.h"

#include <algorithm>

namespace host
{
    void WriteLogPage(LogContents const& contents, std::string const& name, std::size_t left, std::string const& nonce,
                      LogPageWriter const& write)
    {
        for (auto rest = logPageHtml; !rest.empty();)
        {
            auto const begin = rest.find("{{");
            write(rest.substr(0, begin));
            rest.remove_prefix(std::min(begin, rest.size()));
            auto const word = rest.substr(0, rest.find("}}") + 2);
            if (word == "{{nonce}}")
            {
                write(nonce);
            }
            else if (word == "{{style}}")
            {
                write(logPageStyle);
            }
            else if (word == "{{script}}")
            {
                write(logPageScript);
            }
            else if (word == "{{data}}")
            {
                WriteLogPageData(contents, name, left, write);
            }
            rest.remove_prefix(word.size());
        }
    }
} // namespace host
