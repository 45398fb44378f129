#pragma once

#include "host/LogRecords.h"
#include "host/PrivateFolder.h"
#include "interface/Vorlink.h"

#include <memory>
#include <string_view>

namespace host
{
    // The library's log during a search for phones: nothing else tells the search's end. It is on for as long as this
    // lives; a user who does not want it never sees it.
    class SearchLog
    {
    public:
        SearchLog(Vorlink& vorlink, bool wanted);
        ~SearchLog();
        SearchLog(SearchLog const&) = delete;
        SearchLog& operator=(SearchLog const&) = delete;

        bool HoldsEnd() const;

        // Whether the log may seem to hold the end because a device has this name, which is logged as it is.
        static bool IsEndForgedBy(std::string_view name);

    private:
        Vorlink& m_vorlink;
        std::unique_ptr<PrivateFolder> const m_folder; // null where the user wants the log
        LogRecords const m_records;
    };
} // namespace host
