#include "pairing/FileReplacement.h"

#include <windows.h>
#include <io.h>

#include <cerrno>
#include <cstdio>
#include <fstream>

namespace vorlink
{
    namespace
    {
        // What a process writes beside the file: two processes do not meet there.
        std::string NewName(std::string const& fileName)
        {
            return fileName + '.' + std::to_string(GetCurrentProcessId()) + ".new";
        }

        bool WriteWhole(std::FILE* file, std::string_view text)
        {
            bool const written =
                std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
            // On the disk, and not on the way there, or the system's own end could leave the new name without its
            // text. Not every file system knows how.
            _commit(_fileno(file));
            return std::fclose(file) == 0 && written;
        }

        void WriteOver(std::string const& fileName, std::string_view text)
        {
            std::ofstream(fileName, std::ios::binary) << text;
        }
    } // namespace

    bool TryForAMoment(std::function<bool()> const& action)
    {
        constexpr int attempts = 20;
        for (int attempt = 0; attempt < attempts; ++attempt)
        {
            if (action())
            {
                return true;
            }
            Sleep(10);
        }
        return false;
    }

    void ReplaceFileText(std::string const& fileName, std::string_view text)
    {
        std::string const newName = NewName(fileName);
        std::FILE* const file = std::fopen(newName.c_str(), "wb");
        if (!file)
        {
            if (errno != ENOSPC)
            {
                WriteOver(fileName, text);
            }
            return;
        }
        bool const written = WriteWhole(file, text);
        auto const takePlace = [&] {
            return MoveFileExA(newName.c_str(), fileName.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) !=
                   FALSE;
        };
        // Written over, the file would be read by halves, and mixed with what another process writes over it.
        if (written && TryForAMoment(takePlace))
        {
            return;
        }
        DeleteFileA(newName.c_str());
        if (written)
        {
            WriteOver(fileName, text);
        }
    }
} // namespace vorlink
