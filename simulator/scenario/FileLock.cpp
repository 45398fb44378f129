#include "simulator/scenario/FileLock.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace simulator
{
    namespace
    {
        std::filesystem::path LockOf(std::filesystem::path file)
        {
            file += ".lock";
            return file;
        }
    } // namespace

#ifdef _WIN32
    FileLock::FileLock(std::filesystem::path const& file)
        : m_file(CreateFileW(LockOf(file).c_str(), GENERIC_READ | GENERIC_WRITE,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        OVERLAPPED begin{};
        m_isHeld = m_file != INVALID_HANDLE_VALUE && LockFileEx(m_file, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &begin) != 0;
    }

    FileLock::~FileLock()
    {
        if (m_isHeld)
        {
            OVERLAPPED begin{}; // closing the file alone gives it free some time later
            UnlockFileEx(m_file, 0, 1, 0, &begin);
        }
        if (m_file != INVALID_HANDLE_VALUE)
        {
            CloseHandle(m_file);
        }
    }
#else
    FileLock::FileLock(std::filesystem::path const& file)
        : m_file(open(LockOf(file).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666))
    {
        int result = -1;
        do
        {
            result = m_file < 0 ? -1 : flock(m_file, LOCK_EX);
        } while (result != 0 && m_file >= 0 && errno == EINTR);
        m_isHeld = result == 0;
    }

    FileLock::~FileLock()
    {
        if (m_file >= 0)
        {
            close(m_file);
        }
    }
#endif

    bool FileLock::IsHeld() const
    {
        return m_isHeld;
    }
} // namespace simulator
