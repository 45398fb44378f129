#include "host/SearchLog.h"

#include <chrono>
#include <thread>

namespace host
{
    namespace
    {
        constexpr std::string_view endRecord = "[Function:StopIosWatcher] entry StopIosWatcher";
    } // namespace

    SearchLog::SearchLog(Vorlink& vorlink, bool wanted)
        : m_vorlink(vorlink)
        , m_folder(wanted ? nullptr : std::make_unique<PrivateFolder>())
    {
        m_vorlink.SetLogEnabled(true);
    }

    SearchLog::~SearchLog()
    {
        if (m_folder)
        {
            m_vorlink.SetLogEnabled(false);
            // A record that is on its way looks up the current folder only now.
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    }

    bool SearchLog::HoldsEnd() const
    {
        return m_records.Holds(endRecord);
    }

    bool SearchLog::IsEndForgedBy(std::string_view name)
    {
        return name.find(endRecord) != std::string_view::npos;
    }
} // namespace host
