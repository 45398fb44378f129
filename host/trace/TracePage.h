// A trace and the log beside it as a page for a browser.
#pragma once

#include "host/page/PageJson.h"
#include "host/trace/TraceContents.h"

#include <cstddef>
#include <string>
#include <vector>

namespace host
{
    struct TracePageNames
    {
        std::string trace;
        std::string log; // empty for none
    };

    // Of the moments, those from `left` on.
    void WriteTracePageData(TraceContents const& trace, LogContents const& log, std::vector<Moment> const& moments,
                            std::size_t left, TracePageNames const& names, PageWriter const& write);

    void WriteTracePage(TraceContents const& trace, LogContents const& log, std::vector<Moment> const& moments,
                        std::size_t left, TracePageNames const& names, std::string const& nonce,
                        PageWriter const& write);
} // namespace host
