#include "host/log/WriteLogPage.h"

#include "host/Terminal.h"
#include "host/Text.h"
#include "host/WideText.h"
#include "host/log/LogPage.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <system_error>

namespace host
{
    namespace
    {
        // As many as a browser takes without pausing for long.
        constexpr std::size_t mostRecords = 200'000;

        std::string MakeNonce()
        {
            std::random_device random;
            std::array<char, 9> digits{};
            std::string nonce;
            for (int word = 0; word < 4; ++word)
            {
                std::snprintf(digits.data(), digits.size(), "%08x", random());
                nonce += digits.data();
            }
            return nonce;
        }

        bool Write(std::filesystem::path const& path, LogContents const& contents, std::size_t left,
                   std::string const& name)
        {
            std::ofstream file(path, std::ios::binary);
            WriteLogPage(contents, name, left, MakeNonce(), [&](std::string_view piece) { file << piece; });
            file.close();
            return !file.fail();
        }
    } // namespace

    ExitCode WritePageFile(LogContents const& contents, LogOptions const& options)
    {
        std::filesystem::path const path(ToUtf16(options.page));
        auto const fresh = std::filesystem::path(path.native() + L".new");
        auto const left = contents.Size() - std::min(contents.Size(), mostRecords);
        bool const written = left == 0 ? Write(fresh, contents, left, options.file)
                                       : Write(fresh, contents.Latest(mostRecords), left, options.file);
        std::error_code error;
        if (written)
        {
            std::filesystem::rename(fresh, path, error);
        }
        if (!written || error)
        {
            std::filesystem::remove(fresh, error);
            PrintError("vorlinkctl: " + Quoted(options.page) + " cannot be written; what was there is still there.\n");
            return ExitCode::Failed;
        }
        Print("Wrote " + Harmless(options.page) +
              (left == 0 ? ".\n"
                         : " with the last " + std::to_string(mostRecords) + " records; it lacks " +
                               std::to_string(left) + " older ones.\n"));
        return ExitCode::Done;
    }
} // namespace host
