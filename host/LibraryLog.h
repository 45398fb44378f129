#pragma once

#include "host/Records.h"

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>

namespace host
{
    // The library's log of this run, read as it grows.
    class LibraryLog
    {
    public:
        // `file`: not there yet. `copy`: where the records go as well; empty for nowhere.
        LibraryLog(std::filesystem::path file, std::filesystem::path copy);

        // Reads on, on any thread.
        void Poll();

        // A record that claims to be older than this run, or of the future, stands in a device's name: it belongs to
        // the message of the record before it.
        std::vector<Record> const& Records() const
        {
            return m_reader.Records();
        }

        std::string const& Text() const
        {
            return m_text;
        }

        // Why the copy is not complete; empty where it is.
        std::string const& CopyFailure() const
        {
            return m_copyFailure;
        }

    private:
        void Copy(std::string const& text);

        std::mutex m_polling;
        std::filesystem::path const m_file;
        std::filesystem::path const m_copy;
        std::string m_text;
        RecordReader m_reader;
        std::string m_copyFailure;
    };
} // namespace host
