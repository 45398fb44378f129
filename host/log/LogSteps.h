// What each message of the library's log means.
#pragma once

#include "host/Records.h"
#include "host/log/LogFlow.h"

#include <string>
#include <string_view>
#include <vector>

namespace host
{
    // What a record is to the run that it belongs to.
    enum class LogPart
    {
        Begins,
        BeginsRow, // unless the record before it in its run is of this step too
        Goes,      // on
        Joins,     // one that is under way, if there is one
        Settles,   // its outcome, though more may follow
        Succeeds,
        Fails,
    };

    struct LogStep
    {
        char const* function;
        char const* pattern; // of the message; "*" stands for any text
        LogFlow flow;
        LogPart part;
        char const* meaning;           // "{1}" stands for the pattern's first "*"
        char const* outcome = nullptr; // of the run; null where the step decides nothing
        int name = 0;                  // which "*" is the name of the device that the run is about; 0: none
        int line = 0;                  // where the pattern is not enough; 0: any
    };

    // Null for a message that the library has not got.
    LogStep const* FindLogStep(Record const& record);

    // The texts that a pattern's "*" stand for; empty also when the pattern is another text's.
    std::vector<std::string_view> LogTexts(LogStep const& step, std::string_view message);

    // A meaning or an outcome with these texts in it, harmless and not without limit.
    std::string FillIn(std::string_view text, std::vector<std::string_view> const& texts);
} // namespace host
