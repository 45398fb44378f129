#include "host/log/LogPageData.h"

#include "host/Text.h"
#include "host/log/LogListing.h"

#include <cstdint>
#include <map>
#include <vector>

namespace host
{
    namespace
    {
        // Of a harmless text, which has no control characters, no separators of lines and no bytes that are not UTF-8.
        // Nothing in it can end the element that holds the JSON.
        std::string JsonText(std::string_view harmless)
        {
            std::string json = "\"";
            for (char const letter : harmless)
            {
                switch (letter)
                {
                case '"':
                case '\\':
                    json += '\\';
                    json += letter;
                    break;
                case '<':
                    json += "\\u003C";
                    break;
                case '>':
                    json += "\\u003E";
                    break;
                case '&':
                    json += "\\u0026";
                    break;
                default:
                    json += letter;
                }
            }
            return json + "\"";
        }

        template <typename... Fields>
        std::string JsonArray(Fields const&... fields)
        {
            std::string json;
            ((json += (json.empty() ? "[" : ",") + fields), ...);
            return json + "]";
        }

        std::string Number(std::int64_t number)
        {
            return std::to_string(number);
        }

        // Lists what is given to it, a row a line.
        class JsonRows
        {
        public:
            explicit JsonRows(LogPageWriter const& write)
                : m_write(write)
            {
            }

            void Add(std::string const& row)
            {
                m_write((m_isFirst ? "\n" : ",\n") + row);
                m_isFirst = false;
            }

        private:
            LogPageWriter const& m_write;
            bool m_isFirst = true;
        };

        void WriteRuns(LogContents const& contents, LogPageWriter const& write)
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

        using FunctionNumbers = std::map<std::string, std::int64_t, std::less<>>;

        void WriteRecords(LogContents const& contents, FunctionNumbers& functions, LogPageWriter const& write)
        {
            JsonRows rows(write);
            auto const runs = RunsOfRecords(contents);
            for (std::size_t at = 0; at < contents.Size(); ++at)
            {
                auto const record = contents.Read(at);
                auto const* const step = FindLogStep(record);
                bool const isInRun = runs[at] != noLogRun;
                auto const flow = isInRun ? contents.Runs()[runs[at]].flow : step ? step->flow : LogFlow::Other;
                auto const next = static_cast<std::int64_t>(functions.size());
                auto const function = functions.try_emplace(record.function, next).first->second;
                auto const meaning = step ? FillIn(step->meaning, LogTexts(*step, record.message)) : std::string();
                rows.Add(JsonArray(record.time.empty() ? "null" : Number(record.milliseconds),
                                   isInRun ? std::to_string(runs[at]) : "-1", Number(static_cast<int>(flow)),
                                   Number(record.line), Number(function), JsonText(ShownLogMessage(record.message)),
                                   JsonText(meaning)));
            }
        }

        void WriteFlows(LogPageWriter const& write)
        {
            JsonRows rows(write);
            for (auto const& flow : logFlows)
            {
                rows.Add(JsonArray(JsonText(flow.word), JsonText(flow.title), JsonText(flow.withoutEnd)));
            }
        }

        void WriteFunctions(FunctionNumbers const& functions, LogPageWriter const& write)
        {
            std::vector<std::string_view> names(functions.size());
            for (auto const& [name, number] : functions)
            {
                names[static_cast<std::size_t>(number)] = name;
            }
            JsonRows rows(write);
            for (auto const name : names)
            {
                rows.Add(JsonText(Harmless(name)));
            }
        }
    } // namespace

    void WriteLogPageData(LogContents const& contents, std::string const& name, std::size_t left,
                          LogPageWriter const& write)
    {
        FunctionNumbers functions;
        write("{\"name\":" + JsonText(Harmless(name)) + ",\"left\":" + std::to_string(left) +
              ",\"gapMs\":" + Number(logGapMs) + ",\"flows\":[");
        WriteFlows(write);
        write("],\"runs\":[");
        WriteRuns(contents, write);
        write("],\"records\":[");
        WriteRecords(contents, functions, write);
        write("],\"functions\":[");
        WriteFunctions(functions, write);
        write("]}");
    }
} // namespace host
