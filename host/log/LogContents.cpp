#include "host/log/LogContents.h"

#include "host/log/LogText.h"

#include <limits>
#include <string_view>
#include <utility>

namespace host
{
    LogContents::LogContents(std::string text, Progress const& progress)
        : m_text(std::move(text))
    {
        constexpr std::size_t recordsBetweenCalls = 1024;
        std::string_view rest(m_text);
        while (!rest.empty() && Size() < std::numeric_limits<std::uint32_t>::max())
        {
            m_offsets.push_back(m_text.size() - rest.size());
            auto const records = ReadRecords(TakeRecordText(rest, true));
            Add(m_journal.Take(records.front()).run);
            if (m_offsets.size() % recordsBetweenCalls == 0)
            {
                progress(m_offsets.back());
            }
        }
        m_journal.Finish();
    }

    std::size_t LogContents::Size() const
    {
        return m_offsets.size();
    }

    LogContents LogContents::Latest(std::size_t records) const
    {
        return LogContents(m_text.substr(m_offsets.at(Size() - records)));
    }

    Record LogContents::Read(std::size_t record) const
    {
        auto const begin = m_offsets.at(record);
        auto const end = record + 1 < m_offsets.size() ? m_offsets[record + 1] : m_text.size();
        return ReadRecords(std::string_view(m_text).substr(begin, end - begin)).front();
    }

    std::vector<LogRun> const& LogContents::Runs() const
    {
        return m_journal.Runs();
    }

    std::vector<LogBlock> const& LogContents::Blocks() const
    {
        return m_blocks;
    }

    void LogContents::Add(std::size_t run)
    {
        bool const isNewRun = run != noLogRun && run == m_blockOfRun.size();
        bool const isLoose = run == noLogRun && (m_blocks.empty() || m_blocks.back().run != noLogRun);
        if (isNewRun || isLoose)
        {
            m_blocks.push_back({run, {}});
        }
        if (isNewRun)
        {
            m_blockOfRun.push_back(static_cast<std::uint32_t>(m_blocks.size() - 1));
        }
        auto& block = run == noLogRun ? m_blocks.back() : m_blocks[m_blockOfRun[run]];
        block.records.push_back(static_cast<std::uint32_t>(m_offsets.size() - 1));
    }
} // namespace host
