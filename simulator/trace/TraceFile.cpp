#include "simulator/trace/TraceFile.h"

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <mutex>

namespace simulator
{
    namespace
    {
        struct TraceFile
        {
            std::mutex mutex;
            std::atomic<bool> isUsed = true; // until a look at the variable has shown otherwise
            std::filesystem::path name;
            HANDLE handle = INVALID_HANDLE_VALUE;
        };

        // Never destroyed: threads may trace until the process is gone.
        TraceFile& TheFile()
        {
            static auto& file = *new TraceFile;
            return file;
        }

        std::filesystem::path NamedFile()
        {
            std::wstring name(32768, L'\0');
            auto const size = static_cast<DWORD>(name.size());
            name.resize(GetEnvironmentVariableW(L"VORLINK_SIMULATOR_TRACE", name.data(), size));
            return name;
        }

        HANDLE Open(std::filesystem::path const& name)
        {
            return CreateFileW(name.c_str(), FILE_APPEND_DATA | FILE_READ_DATA | SYNCHRONIZE,
                               FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
        }

        // Appending alone is no protection everywhere: where the end is looked up before each write, two processes find
        // the same one. The byte that is locked lies behind all that a file ever holds, so that it bars no reader.
        bool Append(HANDLE file, std::string const& text)
        {
            OVERLAPPED farOff{};
            farOff.OffsetHigh = 0x7FFFFFFF;
            bool const isLocked = LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &farOff) != 0;
            DWORD written = 0;
            bool const isWritten = WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
                                   written == text.size();
            if (isLocked)
            {
                UnlockFileEx(file, 0, 1, 0, &farOff);
            }
            return isWritten;
        }
    } // namespace

    void WriteToTraceFile(TraceLine const& line)
    {
        auto& file = TheFile();
        if (!file.isUsed)
        {
            return;
        }
        auto const json = JsonOf(line) + "\n";
        std::lock_guard const lock(file.mutex);
        if (!file.isUsed)
        {
            return;
        }
        if (file.handle == INVALID_HANDLE_VALUE)
        {
            file.name = NamedFile();
            file.isUsed = !file.name.empty();
            file.handle = file.isUsed ? Open(file.name) : INVALID_HANDLE_VALUE;
        }
        if (file.isUsed && !Append(file.handle, json))
        {
            auto const utf8 = file.name.u8string();
            std::fprintf(stderr, "vorlink_simulator: %s: the trace cannot be written\n",
                         reinterpret_cast<char const*>(utf8.c_str()));
            std::fflush(stderr);
            file.isUsed = false;
        }
    }

    void ReopenTraceFile()
    {
        auto& file = TheFile();
        std::lock_guard const lock(file.mutex);
        if (file.handle != INVALID_HANDLE_VALUE)
        {
            CloseHandle(file.handle);
            file.handle = INVALID_HANDLE_VALUE;
        }
        file.isUsed = true;
    }
} // namespace simulator
