#include "host/PrivateFolder.h"

#include <windows.h>

#include <charconv>
#include <chrono>
#include <string>
#include <string_view>
#include <thread>

namespace host
{
    namespace
    {
        constexpr std::string_view prefix = "vorlinkctl-";

        bool Runs(DWORD process)
        {
            HANDLE const handle = OpenProcess(SYNCHRONIZE, FALSE, process);
            if (!handle)
            {
                return GetLastError() == ERROR_ACCESS_DENIED; // somebody else's
            }
            bool const runs = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
            CloseHandle(handle);
            return runs;
        }

        // "vorlinkctl-<process>-<number>", of a process that is no more.
        bool IsAbandoned(std::string_view name)
        {
            if (!name.starts_with(prefix))
            {
                return false;
            }
            name.remove_prefix(prefix.size());
            DWORD process = 0;
            auto const [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
            return error == std::errc() && end != name.data() + name.size() && *end == '-' && !Runs(process);
        }

        void RemoveAbandoned(std::filesystem::path const& parent)
        {
            std::error_code ignored;
            std::filesystem::directory_iterator entries(parent, ignored);
            for (; entries != std::filesystem::directory_iterator(); entries.increment(ignored))
            {
                auto const name = entries->path().filename().u8string();
                if (IsAbandoned({reinterpret_cast<char const*>(name.data()), name.size()}))
                {
                    std::error_code failed;
                    std::filesystem::remove_all(entries->path(), failed);
                }
            }
        }

        std::filesystem::path MakeFolder()
        {
            auto const parent = std::filesystem::temp_directory_path();
            RemoveAbandoned(parent);
            for (auto number = GetTickCount64();; ++number)
            {
                auto const name =
                    std::string(prefix) + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(number);
                if (std::filesystem::create_directory(parent / name))
                {
                    return parent / name;
                }
            }
        }
    } // namespace

    PrivateFolder::PrivateFolder()
        : m_folder(MakeFolder())
    {
        std::filesystem::current_path(m_folder);
    }

    PrivateFolder::~PrivateFolder()
    {
        std::error_code error;
        // Not back to where the process was: a thread of the library that comes late shall leave nothing there.
        std::filesystem::current_path(m_folder.parent_path(), error);
        // A file in it may be open still, for the rest of a write or for a scanner of viruses.
        for (int attempt = 0; attempt < 100; ++attempt)
        {
            std::filesystem::remove_all(m_folder, error);
            if (!error)
            {
                return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }
} // namespace host
