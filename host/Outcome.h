#pragma once

#include "host/ExitCode.h"
#include "interface/Vorlink.h"

#include <cstddef>
#include <string>

namespace host
{
    struct Outcome
    {
        ExitCode code;
        std::string text; // what happened, and in further lines what to do next
    };

    // `name` is the one that the user asked for.
    Outcome DescribeReport(PairReport const& report, std::string const& name);
    Outcome DescribeFailure(std::string const& failure);
    Outcome DescribeUnpairing(bool success, std::string const& name);
    Outcome DescribeSilence(std::string const& name);
    Outcome DescribeInterruption(std::string const& name);

    // `doing`: what had begun when the time ran out, "pairing"; null while the search was on.
    Outcome DescribeNoAnswer(std::string const& name, long long seconds, char const* doing);

    // Of the devices that were listed; not complete when the search was ended early.
    Outcome DescribeList(std::size_t count, bool complete);
} // namespace host
