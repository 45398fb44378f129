// What came of an operation: the words, the exit code and the facts.
#pragma once

#include "host/Evidence.h"
#include "host/ExitCode.h"
#include "host/Json.h"
#include "interface/Vorlink.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
    struct Outcome
    {
        ExitCode code;
        std::string name; // of the meaning, or "Listed", "Failed", "Declined"
        std::string text; // what happened
        std::string next; // what to do about it
        std::vector<std::string> warnings;
        Json facts; // the device's name and address, and what else is known
    };

    // A name stands for what the user asked for, unless said otherwise; an address has colons.

    // A report of a pairing that has found no device of the name.
    bool IsNothingFound(PairReport const& report);

    Outcome DescribePairing(PairReport const& report, std::string const& asked, std::optional<Match> const& match,
                            std::optional<std::string> const& status);

    // Of the platform's own answer to the program itself; `status` as the platform numbers it.
    Outcome DescribeOwnPairing(std::string const& name, std::string const& address, int status);

    Outcome DescribeUnpairing(bool success, std::string const& asked, std::optional<Match> const& match,
                              LeUnpairing const& le);

    // `meaning`: one of the silences. `what`: a sentence about this one, and `next` about what it has left behind;
    // where they are empty, the meaning's own.
    Outcome DescribeSilence(std::string_view meaning, std::string const& asked, std::optional<Match> const& match,
                            std::string const& what = {}, std::string const& next = {});

    // `failure` as DescribeCurrentException tells it; `simulated`: the platform is the simulator.
    Outcome DescribeFailure(std::string const& failure, bool simulated);

    // Of the devices that were listed; not complete when the search was ended early.
    Outcome DescribeList(std::size_t count, bool complete);

    Outcome DescribeDeclined(std::string const& text, std::string const& next);

    // a4:c1:38:5e:22:0f
    std::string AddressOf(PairReport const& report);
} // namespace host
