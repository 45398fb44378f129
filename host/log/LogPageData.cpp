#include "host/log/LogPageData.h"

#include "host/Text.h"
#include "host/log/LogListing.h"

#include <cstdint>
#include <vector>

namespace host
{
    namespace
    {
        void WriteRuns(LogContents const& contents, PageWriter const& write)
        {
            JsonRows rows(write);
            for (auto const& run : contents.Runs())
            {
                rows.Add(JsonArray(Number(static_cast<int>(run.flow)), JsonText(run.title),
                                   Number(static_cast<int>(run.end)), JsonText(DescribeEnd(run)), Number(run.begin),
                                   Number(run.last), Number(run.until)));
            }
        }

        std::vector<std::size_t> RunsOfRecords(LogContents const& contents)
        {
            std::vector<std::size_t> runs(contents.Size(), noLogRun);
            for (auto const& block : contents.Blocks())
            {
                for (auto const record : block.records)
                {
                    runs[record] = block.run;
                }
            }
            return runs;
        }

        void WriteRecords(LogContents const& contents, WordNumbers& functions, PageWriter const& write)
        {
            JsonRows rows(write);
            auto const runs = RunsOfRecords(contents);
            for (std::size_t at = 0; at < contents.Size(); ++at)
            {
                auto const record = contents.Read(at);
                auto const* const step = FindLogStep(record);
                bool const isInRun = runs[at] != noLogRun;
                auto const flow = isInRun ? contents.Runs()[runs[at]].flow : step ? step->flow : LogFlow::Other;
                auto const meaning = step ? FillIn(step->meaning, LogTexts(*step, record.message)) : std::string();
                rows.Add(JsonArray(record.time.empty() ? "null" : Number(record.milliseconds),
                                   isInRun ? std::to_string(runs[at]) : "-1", Number(static_cast<int>(flow)),
                                   Number(record.line), Number(functions.Of(record.function)),
                                   JsonText(ShownLogMessage(record.message)), JsonText(meaning)));
            }
        }

        void WriteFlows(PageWriter const& write)
        {
            JsonRows rows(write);
            for (auto const& flow : logFlows)
            {
                rows.Add(JsonArray(JsonText(flow.word), JsonText(flow.title), JsonText(flow.withoutEnd)));
            }
        }
    } // namespace

    void WriteLogPageData(LogContents const& contents, std::string const& name, std::size_t left,
                          PageWriter const& write)
    {
        WordNumbers functions;
        write("{\"name\":" + JsonText(Harmless(name)) + ",\"left\":" + std::to_string(left) +
              ",\"gapMs\":" + Number(logGapMs) + ",\"flows\":[");
        WriteFlows(write);
        write("],\"runs\":[");
        WriteRuns(contents, write);
        write("],\"records\":[");
        WriteRecords(contents, functions, write);
        write("],\"functions\":[");
        functions.Write(write);
        write("]}");
    }
} // namespace host
