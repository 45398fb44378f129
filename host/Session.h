#pragma once

#include "host/LibraryLog.h"
#include "host/PrivateFolder.h"
#include "interface/Vorlink.h"

#include <filesystem>
#include <string>

namespace host
{
    // The library at work for this program. It runs in a private folder, so that its log tells how far it has come
    // wherever the program was started; the data store is the user's, who keeps what is learnt. One a process.
    class Session
    {
    public:
        // `keepLog`: the records go to "log.log" in the user's folder too. Loads the library, and what earlier runs
        // have learnt.
        explicit Session(bool keepLog);
        ~Session();
        Session(Session const&) = delete;
        Session& operator=(Session const&) = delete;

        Vorlink& Library() const
        {
            return m_vorlink;
        }

        LibraryLog& Log()
        {
            return m_log;
        }

        LibraryLog const& Log() const
        {
            return m_log;
        }

        // The LE side that the data store has for this name.
        std::string StoredLe(std::string const& name) const;

        // Into the user's data store. Throws std::runtime_error.
        void KeepEntry(std::string const& name, std::string const& value) const;

        // The listing of devices that the library has the system make.
        bool HasListing() const;

    private:
        std::filesystem::path const m_userFolder;
        PrivateFolder const m_folder;
        LibraryLog m_log;
        Vorlink& m_vorlink;
    };

    // Whether the simulator answers in the platform's place, as far as this process has asked it.
    bool IsSimulated();

    // For a process that ends unasked: what the log holds goes to its copy.
    void EndSession();
} // namespace host
