#include "host/Session.h"

#include "host/DataFile.h"
#include "host/Library.h"
#include "host/Terminal.h"
#include "host/Text.h"

#include <windows.h>

#include <atomic>
#include <memory>
#include <stdexcept>

namespace host
{
    namespace
    {
        std::atomic<Session*> current = nullptr;

        // What the simulator is told in the environment may be told from the user's folder.
        void MakeAbsolute(wchar_t const* variable)
        {
            std::wstring value(32'768, L'\0');
            value.resize(GetEnvironmentVariableW(variable, value.data(), static_cast<DWORD>(value.size())));
            if (!value.empty())
            {
                SetEnvironmentVariableW(variable, std::filesystem::absolute(value).c_str());
            }
        }

        // Before the process leaves it.
        std::filesystem::path UserFolder()
        {
            MakeAbsolute(L"VORLINK_SCENARIO");
            MakeAbsolute(L"VORLINK_SIMULATOR_STATE");
            return std::filesystem::current_path();
        }

        // One that cannot be read is none to the library, which would not say so.
        void CopyStore(std::filesystem::path const& from, std::filesystem::path const& to)
        {
            try
            {
                if (auto const entries = ReadFileText(from); !entries.empty())
                {
                    ReplaceFileText(to, entries);
                }
            }
            catch (std::runtime_error const& error)
            {
                PrintError("vorlinkctl: " + Harmless(error.what()) +
                           ": no LE side that it holds is known in this run.\n");
            }
        }

        Vorlink& MakeVorlink(VorlinkFactory factory)
        {
            // Never released: the library may still be at work for the object when the process ends.
            return *factory().release();
        }
    } // namespace

    Session::Session(bool keepLog)
        : m_userFolder(UserFolder())
        , m_log(m_folder.Path() / "log.log", keepLog ? m_userFolder / "log.log" : std::filesystem::path())
        , m_vorlink(MakeVorlink(LoadVorlink()))
    {
        CopyStore(m_userFolder / dataFile, m_folder.Path() / dataFile);
        m_vorlink.SetLogEnabled(true);
        m_vorlink.Initialize();
        current = this;
    }

    Session::~Session()
    {
        current = nullptr;
        m_vorlink.SetLogEnabled(false);
    }

    std::string Session::StoredLe(std::string const& name) const
    {
        return EntryIn(ReadFileText(m_folder.Path() / dataFile), name);
    }

    void Session::KeepEntry(std::string const& name, std::string const& value) const
    {
        auto const file = m_userFolder / dataFile;
        // Two of these programs at once lose nothing of each other's.
        HANDLE const mutex = CreateMutexW(nullptr, FALSE, L"Local\\vorlinkctl-MyLEData");
        std::unique_ptr<void, decltype(&CloseHandle)> const closing(mutex, CloseHandle);
        if (WaitForSingleObject(mutex, 5000) == WAIT_TIMEOUT)
        {
            throw std::runtime_error("another vorlinkctl keeps the data file busy");
        }
        std::unique_ptr<void, decltype(&ReleaseMutex)> const releasing(mutex, ReleaseMutex);
        ReplaceFileText(file, WithEntry(ReadFileText(file), name, value));
    }

    bool Session::HasListing() const
    {
        std::error_code ignored;
        return std::filesystem::exists(m_folder.Path() / "ble.jpg", ignored);
    }

    bool IsSimulated()
    {
        return GetModuleHandleW(L"vorlink_simulator.dll") != nullptr;
    }

    void EndSession()
    {
        if (auto* const session = current.exchange(nullptr))
        {
            session->Log().Poll();
        }
    }
} // namespace host
