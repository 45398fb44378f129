#include "host/log/WriteLogPage.h"

#include "host/Terminal.h"
#include "host/Text.h"
#include "host/log/LogPage.h"
#include "host/page/PageFile.h"

#include <algorithm>
#include <string>

namespace host
{
    namespace
    {
        // As many as a browser takes without pausing for long.
        constexpr std::size_t mostRecords = 200'000;
    } // namespace

    ExitCode WritePageFile(LogContents const& contents, LogOptions const& options)
    {
        auto const left = contents.Size() - std::min(contents.Size(), mostRecords);
        bool const written = WritePageFile(options.page, [&](std::string const& nonce, PageWriter const& write) {
            auto const writeOf = [&](LogContents const& some) { WriteLogPage(some, options.file, left, nonce, write); };
            left == 0 ? writeOf(contents) : writeOf(contents.Latest(mostRecords));
        });
        if (!written)
        {
            return ExitCode::Failed;
        }
        Print("Wrote " + Harmless(options.page) +
              (left == 0 ? ".\n"
                         : " with the last " + std::to_string(mostRecords) + " records; it lacks " +
                               std::to_string(left) + " older ones.\n"));
        return ExitCode::Done;
    }
} // namespace host
