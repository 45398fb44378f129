#pragma once

#include <string_view>

namespace host
{
    // Takes the text of the first record from the library's log: ReadRecords makes one record of it, and the same
    // records of one such text after another as of the whole log. Unless the log ends with `rest`, nothing is taken,
    // and nothing returned, where the record may go on behind it.
    std::string_view TakeRecordText(std::string_view& rest, bool ends);
} // namespace host
