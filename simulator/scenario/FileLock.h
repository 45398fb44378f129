#pragma once

#include <filesystem>

namespace simulator
{
    // Held by one at a time, of all threads and processes. The system takes it from a process that ends. It is a second
    // file's, "FILE.lock", which stays: the file itself is replaced meanwhile.
    class FileLock
    {
    public:
        explicit FileLock(std::filesystem::path const& file); // waits for it
        ~FileLock();
        FileLock(FileLock const&) = delete;
        FileLock& operator=(FileLock const&) = delete;

        // False where the second file cannot be made.
        bool IsHeld() const;

    private:
#ifdef _WIN32
        void* m_file;
#else
        int m_file;
#endif
        bool m_isHeld = false;
    };
} // namespace simulator
