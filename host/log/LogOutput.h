// The log's records on standard output.
#pragma once

#include "host/log/LogContents.h"
#include "host/log/LogListing.h"

#include <functional>
#include <string>

namespace host
{
    // As wide as the console, in its colours; elsewhere lines are as long as they get.
    LogLayout LayoutOfOutput();

    // A line of JSON. Runs are counted from 1.
    std::string JsonLine(Record const& record, LogEntry const& entry);

    // Called with the part of the work that is done, from 0 to 1.
    using LogProgress = std::function<void(double part)>;

    void PrintLog(LogContents const& contents, std::string const& name, LogProgress const& progress);
    void PrintLogAsJson(std::string_view text, LogProgress const& progress);
} // namespace host
