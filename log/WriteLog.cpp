#include "log/WriteLog.h"

#include <direct.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace vorlink
{
    namespace
    {
        constexpr std::size_t directoryCapacity = 260;
        constexpr char logName[] = "./log.log";

        using Path = std::array<char, directoryCapacity + sizeof logName>;

        // No separator stands between the two: the dot that then ends the directory's name is dropped by the
        // file system, and the root directory, which ends in a separator, needs none either.
        Path LogPath()
        {
            std::array<char, directoryCapacity> directory{};
            if (!_getcwd(directory.data(), directoryCapacity))
            {
                directory[0] = '\0';
            }
            Path path{};
            FormatInto(path, "%s%s", directory.data(), logName);
            return path;
        }

        void MeasureFile(char const* path)
        {
            if (std::FILE* const file = std::fopen(path, "r"))
            {
                std::fseek(file, 0, SEEK_END);
                (void)std::ftell(file); // the log may grow without a limit
                std::fclose(file);
            }
        }
    } // namespace

    void WriteLog(bool enabled, char const* sourcePath, int line, char const* functionName, char const* format, ...)
    {
        if (!enabled)
        {
            return;
        }
        std::mutex perCall; // of this call alone: it excludes nobody
        std::lock_guard const lock(perCall);

        RecordHead const head{std::chrono::system_clock::now(), sourcePath, line, functionName};
        auto* const record = static_cast<char*>(std::calloc(recordCapacity, 1));
        if (!record)
        {
            return;
        }
        std::va_list arguments;
        va_start(arguments, format);
        std::size_t const length = BuildRecord({record, recordCapacity}, head, format, arguments);
        va_end(arguments);

        Path const path = LogPath();
        MeasureFile(path.data());
        if (std::FILE* const file = std::fopen(path.data(), "ab+"))
        {
            std::setvbuf(file, nullptr, _IOFBF, recordCapacity); // so that the record goes out in one write
            std::fwrite(record, 1, length, file);
            std::fclose(file);
            std::free(record);
        }
        // A record that cannot be written is dropped with its buffer.
    }
} // namespace vorlink
