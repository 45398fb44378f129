// A log that is whole: its text, once, and where in it each record stands.
#pragma once

#include "host/Records.h"
#include "host/log/LogJournal.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace host
{
    // A run's records, or records that stand together and belong to none.
    struct LogBlock
    {
        std::size_t run; // noLogRun for none
        std::vector<std::uint32_t> records;
    };

    class LogContents
    {
    public:
        using Progress = std::function<void(std::size_t bytes)>;

        // Calls `progress` now and then with how much is read. More than 2^32 - 1 records are not read.
        explicit LogContents(
            std::string text, Progress const& progress = [](std::size_t) {});

        std::size_t Size() const;

        // So many of its last records, as a log of their own.
        LogContents Latest(std::size_t records) const;

        Record Read(std::size_t record) const;

        std::vector<LogRun> const& Runs() const;

        // In the order in which they begin.
        std::vector<LogBlock> const& Blocks() const;

    private:
        void Add(std::size_t run);

        std::string const m_text;
        std::vector<std::size_t> m_offsets; // of the records' texts, and the text's size
        LogJournal m_journal;
        std::vector<LogBlock> m_blocks;
        std::vector<std::uint32_t> m_blockOfRun;
    };
} // namespace host
