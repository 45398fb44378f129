#include "host/trace/TracePage.h"

#include "host/Text.h"
#include "host/page/Page.h"
#include "host/page/PageTexts.h"
#include "host/trace/TraceListing.h"

namespace host
{
    namespace
    {
        struct Words
        {
            WordNumbers names;
            WordNumbers objects;
            WordNumbers threads;
        };

        std::string Row(PlatformLine const& line, bool severalProcesses, Words& words)
        {
            auto const thread =
                (severalProcesses ? std::to_string(line.process) + "/" : "") + std::to_string(line.thread);
            // What makes a watcher is of the watcher that it makes.
            auto const made = line.result && line.result->starts_with('#') ? line.result : std::nullopt;
            auto const& object = line.object ? line.object : made;
            bool const isProcessesOwn = severalProcesses && object && object->starts_with('#');
            auto const whose = isProcessesOwn ? " of " + std::to_string(line.process) : "";
            return JsonArray(Number(line.us), line.isEvent ? "1" : "0", Number(words.threads.Of(thread)),
                             object ? Number(words.objects.Of(WithShortIdentifiers(*object) + whose)) : "-1",
                             Number(words.names.Of(line.name)), JsonText(DescribePlatformLine(line)),
                             line.Failed() ? JsonText(Harmless(*line.code)) : "null",
                             line.took ? Number(*line.took) : "null");
        }

        std::string Row(Record const& record, Words& words)
        {
            auto const* const step = FindLogStep(record);
            auto const meaning = step ? FillIn(step->meaning, LogTexts(*step, record.message)) : std::string();
            return JsonArray(Number(record.milliseconds * 1000), "2", "-1", "-1",
                             Number(words.names.Of(record.function + ":" + std::to_string(record.line))),
                             JsonText(ShownLogMessage(record.message)), JsonText(meaning), "null");
        }
    } // namespace

    void WriteTracePageData(TraceContents const& trace, LogContents const& log, std::vector<Moment> const& moments,
                            std::size_t left, TracePageNames const& names, PageWriter const& write)
    {
        Words words;
        write("{\"name\":" + JsonText(Harmless(names.trace)) + ",\"log\":" + JsonText(Harmless(names.log)) +
              ",\"left\":" + std::to_string(left) + ",\"rows\":[");
        JsonRows rows(write);
        for (auto at = left; at < moments.size(); ++at)
        {
            auto const& [us, index, isRecord] = moments[at];
            rows.Add(isRecord ? Row(log.Read(index), words) : Row(trace.Read(index), trace.Processes() > 1, words));
        }
        write("],\"names\":[");
        words.names.Write(write);
        write("],\"objects\":[");
        words.objects.Write(write);
        write("],\"threads\":[");
        words.threads.Write(write);
        write("]}");
    }

    void WriteTracePage(TraceContents const& trace, LogContents const& log, std::vector<Moment> const& moments,
                        std::size_t left, TracePageNames const& names, std::string const& nonce,
                        PageWriter const& write)
    {
        WritePage({tracePageHtml, tracePageStyle, tracePageScript}, nonce, write,
                  [&](PageWriter const& data) { WriteTracePageData(trace, log, moments, left, names, data); });
    }
} // namespace host
