// The library's log, as text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
    // One record. A line that begins none belongs to the message of the record before it, for a device's name may hold
    // line feeds and is logged as it is; before the first record it is a record with a message alone.
    struct Record
    {
        std::string time;              // local, as it stands there: "2024-03-07 09:05:02 047"
        std::int64_t milliseconds = 0; // the same, counted as if it were UTC: for differences alone
        int line = 0;
        std::string function; // "SubVorlink::PairedDevice", "ReadLine"
        std::string message;  // may hold line feeds

        bool operator==(Record const&) const = default;
    };

    // The last record may lack its line feed.
    std::vector<Record> ReadRecords(std::string_view text);
} // namespace host
