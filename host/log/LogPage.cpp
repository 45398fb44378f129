#include "host/log/LogPage.h"

#include "host/page/Page.h"
#include "host/page/PageTexts.h"

namespace host
{
    void WriteLogPage(LogContents const& contents, std::string const& name, std::size_t left, std::string const& nonce,
                      PageWriter const& write)
    {
        WritePage({logPageHtml, logPageStyle, logPageScript}, nonce, write,
                  [&](PageWriter const& data) { WriteLogPageData(contents, name, left, data); });
    }
} // namespace host
