#include "host/log/FollowLog.h"

#include "host/Interruption.h"
#include "host/Terminal.h"
#include "host/Text.h"
#include "host/WideText.h"
#include "host/log/LogOutput.h"
#include "host/log/LogTail.h"
#include "host/log/LogText.h"

#include <chrono>
#include <deque>
#include <string>
#include <string_view>
#include <thread>

namespace host
{
    namespace
    {
        // What the log tells as it grows.
        class Follower
        {
        public:
            explicit Follower(bool json)
                : m_json(json)
                , m_layout(LayoutOfOutput())
            {
            }

            void Add(LogTail::News const& news)
            {
                if (news.anew)
                {
                    m_text.clear();
                    m_journal = {};
                }
                m_text += news.text;
            }

            // Each record's text, of those that are complete; where `quiet`, also the one that might have gone on.
            std::deque<std::string> Take(bool quiet)
            {
                std::deque<std::string> shown;
                auto const complete = std::string_view(m_text).substr(0, m_text.find_last_of('\n') + 1);
                auto rest = complete;
                for (auto text = TakeRecordText(rest, quiet); !text.empty(); text = TakeRecordText(rest, quiet))
                {
                    shown.push_back(Show(ReadRecords(text).front()));
                }
                m_text.erase(0, complete.size() - rest.size());
                return shown;
            }

        private:
            std::string Show(Record const& record)
            {
                auto const entry = m_journal.Take(record);
                if (m_json)
                {
                    return JsonLine(record, entry);
                }
                auto const* const run = entry.run == noLogRun ? nullptr : &m_journal.Runs()[entry.run];
                auto const since = entry.begins ? std::nullopt : entry.inLog;
                bool const ends =
                    entry.step && (entry.step->part == LogPart::Succeeds || entry.step->part == LogPart::Fails);
                return (entry.begins ? ListHeading(*run, record.time, false, m_layout) : "") +
                       ListRecord({record, entry.step, entry.flow, since, 0}, m_layout) +
                       (run && ends ? ListEnd(*run, m_layout) : "");
            }

            bool const m_json;
            LogLayout const m_layout;
            LogJournal m_journal;
            std::string m_text;
        };

        void PrintLast(std::deque<std::string> const& shown, std::size_t most)
        {
            std::string text;
            for (auto at = shown.size() - std::min(most, shown.size()); at < shown.size(); ++at)
            {
                text += shown[at];
            }
            Print(text);
        }
    } // namespace

    ExitCode FollowLog(LogOptions const& options)
    {
        using Clock = std::chrono::steady_clock;
        constexpr std::chrono::milliseconds pause(100);
        constexpr std::size_t history = 10; // records that were there before

        std::filesystem::path const path(ToUtf16(options.file));
        auto const end = Clock::now() + std::chrono::seconds(options.timeoutSeconds);
        auto const isOver = [&] { return options.timeoutSeconds != 0 && Clock::now() >= end; };
        auto const tell = [&](std::string const& text) { PrintError(options.output.quiet ? "" : text + "\n"); };
        auto const name = Harmless(options.file);

        Interruption const interruption;
        LogTail tail(path);
        Follower follower(options.output.json);
        std::error_code error;
        bool found = std::filesystem::exists(path, error);
        if (!found)
        {
            tell("There is no " + name + " yet. Waiting for it; Ctrl+C ends.");
        }
        follower.Add(tail.Read());
        PrintLast(follower.Take(true), history);
        while (!interruption.Requested() && !IsOutputLost() && !isOver())
        {
            std::this_thread::sleep_for(pause);
            auto const news = tail.Read();
            if (news.anew)
            {
                tell(name + " begins anew.");
            }
            found = found || !news.text.empty();
            follower.Add(news);
            PrintLast(follower.Take(news.text.empty()), std::string::npos);
        }
        PrintLast(follower.Take(true), std::string::npos);
        return found ? ExitCode::Done : ExitCode::NotFound;
    }
} // namespace host
