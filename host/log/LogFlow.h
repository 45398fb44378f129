// What the library was at when it wrote a record.
#pragma once

#include <cstdint>

namespace host
{
    enum class LogFlow
    {
        Pair,
        Unpair,
        Phones,
        Learn,
        Search, // for a pairing or an unpairing whose beginning the log does not have
        Other,
    };

    struct LogFlowTraits
    {
        char const* word;
        char const* title;      // of a run
        std::int64_t longestMs; // after which the library is at it no more, whether the log tells or not; 0: no limit
        char const* withoutEnd; // why the log may have no end of a run
    };

    // In the order of the enumeration.
    inline constexpr LogFlowTraits logFlows[] = {
        {"pair", "Pairing", 0, "the platform has not answered, or another pairing was under way"},
        {"unpair", "Unpairing", 0, "no device was found, or the platform refused or has not answered"},
        {"phones", "Search for phones", 25'000, "the program has ended before the search"},
        {"learn", "Learning the LE side", 10'000, "the program has ended before, or the listing did not come"},
        {"search", "Lone search", 0, ""},
        {"other", "Other", 0, ""},
    };

    constexpr LogFlowTraits const& TraitsOf(LogFlow flow)
    {
        return logFlows[static_cast<int>(flow)];
    }
} // namespace host
