#include "host/page/Page.h"

#include "host/page/PageTexts.h"

#include <algorithm>

namespace host
{
    void WritePage(PageTexts const& texts, std::string const& nonce, PageWriter const& write,
                   std::function<void(PageWriter const&)> const& writeData)
    {
        for (auto rest = texts.html; !rest.empty();)
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
                write(pageStyle);
                write(texts.style);
            }
            else if (word == "{{script}}")
            {
                write(pageScript);
                write(texts.script);
            }
            else if (word == "{{data}}")
            {
                writeData(write);
            }
            rest.remove_prefix(word.size());
        }
    }
} // namespace host
