#include "host/LibraryLog.h"

#include <windows.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace host
{
    namespace
    {
        // Local time, counted as records count theirs.
        std::int64_t LocalMilliseconds()
        {
            using namespace std::chrono;
            SYSTEMTIME now{};
            GetLocalTime(&now);
            sys_days const date = year(now.wYear) / month(now.wMonth) / day(now.wDay);
            auto const time = date.time_since_epoch() + hours(now.wHour) + minutes(now.wMinute) + seconds(now.wSecond) +
                              milliseconds(now.wMilliseconds);
            return duration_cast<milliseconds>(time).count();
        }

        // The clock may be set a little while the program runs.
        constexpr std::int64_t tolerance = 2000;

        auto IsOfThisRun()
        {
            return [start = LocalMilliseconds()](Record const& record) {
                return record.milliseconds >= start - tolerance &&
                       record.milliseconds <= LocalMilliseconds() + tolerance;
            };
        }
    } // namespace

    LibraryLog::LibraryLog(std::filesystem::path file, std::filesystem::path copy)
        : m_file(std::move(file))
        , m_copy(std::move(copy))
        , m_reader(IsOfThisRun())
    {
    }

    void LibraryLog::Poll()
    {
        // Whoever holds it reads what there is. It may be the very thread whose failure has brought us here.
        std::unique_lock const polling(m_polling, std::try_to_lock);
        if (!polling)
        {
            return;
        }
        std::ifstream stream(m_file, std::ios::binary);
        stream.seekg(static_cast<std::streamoff>(m_text.size()));
        std::string const added(std::istreambuf_iterator<char>(stream), {});
        if (added.empty())
        {
            return;
        }
        m_text += added;
        m_reader.Read(added);
        Copy(added);
    }

    void LibraryLog::Copy(std::string const& text)
    {
        if (m_copy.empty())
        {
            return;
        }
        HANDLE const file =
            CreateFileW(m_copy.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                        nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD written = 0;
        bool const isWritten = file != INVALID_HANDLE_VALUE &&
                               WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
                               written == text.size();
        if (!isWritten)
        {
            m_copyFailure = std::system_category().message(static_cast<int>(GetLastError()));
        }
        if (file != INVALID_HANDLE_VALUE)
        {
            CloseHandle(file);
        }
    }
} // namespace host
