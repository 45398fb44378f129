// Any bytes as the library's log: its records are the same however the log comes in, each is in one place, and what is
// shown of them is harmless and fits.
#include "fuzz/Require.h"
#include "host/Text.h"
#include "host/log/LogContents.h"
#include "host/log/LogListing.h"
#include "host/log/LogPageData.h"
#include "host/log/LogText.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace
{
    using fuzz::Require;
    using namespace host;

    void Append(std::vector<Record>& records, std::string_view text)
    {
        auto const taken = ReadRecords(text);
        Require(taken.size() == 1);
        records.push_back(taken.front());
    }

    // As a reader who follows the log gets them, when its lines come in two portions.
    std::vector<Record> RecordsOfPortions(std::string_view log, std::size_t middle)
    {
        std::vector<Record> records;
        std::size_t taken = 0;
        for (auto const end : {middle, log.size()})
        {
            bool const isLast = end == log.size();
            auto rest = log.substr(taken, end - taken);
            auto const size = rest.size();
            for (auto text = TakeRecordText(rest, isLast); !text.empty(); text = TakeRecordText(rest, isLast))
            {
                Append(records, text);
            }
            taken += size - rest.size();
        }
        Require(taken == log.size());
        return records;
    }

    void CheckRuns(LogContents const& contents)
    {
        std::vector<int> times(contents.Size());
        for (auto const& block : contents.Blocks())
        {
            Require(!block.records.empty());
            Require(block.run == noLogRun || contents.Runs().at(block.run).records == block.records.size());
            for (auto const record : block.records)
            {
                ++times.at(record);
            }
        }
        for (auto const count : times)
        {
            Require(count == 1);
        }
        for (auto const& run : contents.Runs())
        {
            Require(run.until >= run.last && run.longestGap >= 0);
            Require(Harmless(run.title) == run.title || run.title.find('\\') != std::string::npos);
        }
    }

    void CheckShown(std::string_view text)
    {
        constexpr std::size_t columns = 40;
        LogLayout const layout{columns, [](LogTone, std::string_view shown) { return std::string(shown); }};
        for (auto const& record : ReadRecords(text))
        {
            auto const shown = ListRecord({record, FindLogStep(record), LogFlow::Pair, 5000, 0}, layout);

            for (std::string_view rest(shown); !rest.empty();)
            {
                auto const line = rest.substr(0, rest.find('\n'));
                Require(Columns(line) <= columns);
                Require(Harmless(line) == line || line.find('\\') != std::string_view::npos);
                rest.remove_prefix(line.size() + 1);
            }
        }
    }
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const log(reinterpret_cast<char const*>(data), size);
    auto const records = ReadRecords(log);
    auto const lines = log.substr(0, log.find('\n', size / 2) + 1);
    Require(RecordsOfPortions(log, lines.size()) == records);

    LogContents const contents{std::string(log)};
    Require(contents.Size() == records.size());
    for (std::size_t at = 0; at < records.size(); ++at)
    {
        Require(contents.Read(at) == records[at]);
    }
    CheckRuns(contents);
    CheckShown(log);

    std::string page;
    WriteLogPageData(contents, "log", 0, [&](std::string_view piece) { page += piece; });
    Require(page.find_first_of("<>&") == std::string::npos);
    return 0;
}
