// The library's log, as text.
#pragma once

#include <cstdint>
#include <functional>
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

    // Takes a log as it grows. A line counts when its line feed has come.
    class RecordReader
    {
    public:
        // `isTrue`: whether a line that looks like a record's beginning is one, and not what a device's name has made
        // of the line before; without it every one is.
        explicit RecordReader(std::function<bool(Record const&)> isTrue = {});

        void Read(std::string_view text);

        // The last one may go on with the next line.
        std::vector<Record> const& Records() const
        {
            return m_records;
        }

    private:
        std::function<bool(Record const&)> const m_isTrue;
        std::vector<Record> m_records;
        std::string m_line; // its beginning
    };

    // Of a text that is there as a whole: its last line needs no line feed.
    std::vector<Record> ReadRecords(std::string_view text);
} // namespace host
