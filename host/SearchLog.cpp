#include "host/SearchLog.h"

#include <chrono>
#include <thread>

namespace host
{
    namespace
    {
        constexpr std::string_view endRecord = "[Function:StopIosWatcher] entry StopIosWatcher";
    } // namespace

    SearchLog::SearchLog(Vorlink& theVorlink, bool wanted)
        : vorlink{theVorlink}
        , folder{wanted ? nullptr : std::make_unique<PrivateFolder>()}
    {
        vorlink.SetLogEnabled(true);
    }

    SearchLog::~SearchLog()
    {
        if (folder)
        {
            vorlink.SetLogEnabled(false);
            // A record that is on its way looks up the current folder only now.
            std::this_thread::sleep_for(std::chrono::milliseconds{50});
        }
    }

    bool SearchLog::HoldsEnd() const
    {
        return records.Read().find(endRecord) != std::string::npos;
    }

    bool SearchLog::IsEndForgedBy(std::string_view name)
    {
        return name.find(endRecord) != std::string_view::npos;
    }
} // namespace host
