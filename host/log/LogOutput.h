// The log's records on standard output.
#pragma once

#include "host/log/LogContents.h"
#include "host/log/LogListing.h"

#include <functional>
#include <string>
#include <string_view>

namespace host
{
    // Collects what is printed: a call of the system a record would take most of the time.
    class Output
    {
    public:
        Output() = default;
        ~Output();
        Output(Output const&) = delete;
        Output& operator=(Output const&) = delete;

        // Whether something was printed just now.
        bool Add(std::string_view text);

    private:
        std::string m_text;
    };

    // As wide as the console, in its colours; elsewhere lines are as long as they get.
    LogLayout LayoutOfOutput();

    // A line of JSON. Runs are counted from 1.
    std::string JsonLine(Record const& record, LogEntry const& entry);

    // Called with the part of the work that is done, from 0 to 1.
    using LogProgress = std::function<void(double part)>;

    void PrintLog(LogContents const& contents, std::string const& name, LogProgress const& progress);
    void PrintLogAsJson(std::string_view text, LogProgress const& progress);
} // namespace host
