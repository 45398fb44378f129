#include "host/log/LogText.h"

#include "host/Records.h"

#include <algorithm>
#include <cstddef>

namespace host
{
    namespace
    {
        std::string_view FirstLine(std::string_view text)
        {
            return text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
        }

        bool TakesFurtherLines(std::string_view line)
        {
            return !ReadRecords(line).front().function.empty();
        }

        bool BeginsRecord(std::string_view line)
        {
            return !ReadRecords(line).front().time.empty();
        }
    } // namespace

    std::string_view TakeRecordText(std::string_view& rest, bool ends)
    {
        if (rest.empty())
        {
            return {};
        }
        auto const first = FirstLine(rest);
        std::size_t size = first.size();
        if (TakesFurtherLines(first))
        {
            while (size < rest.size() && !BeginsRecord(FirstLine(rest.substr(size))))
            {
                size += FirstLine(rest.substr(size)).size();
            }
            if (size == rest.size() && !ends)
            {
                return {};
            }
        }
        auto const taken = rest.substr(0, size);
        rest.remove_prefix(size);
        return taken;
    }
} // namespace host
