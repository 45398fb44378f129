#pragma once

#include "host/log/LogContents.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace host
{
    // Takes a page, or its data, piece by piece.
    using LogPageWriter = std::function<void(std::string_view piece)>;

    // What the script makes a log's page of, as JSON in which nothing can end the element that holds it. `left`: how
    // many older records the contents are without.
    void WriteLogPageData(LogContents const& contents, std::string const& name, std::size_t left,
                          LogPageWriter const& write);
} // namespace host
