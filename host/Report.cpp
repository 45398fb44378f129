#include "host/Report.h"

#include "host/Terminal.h"
#include "host/Text.h"

#include <optional>
#include <sstream>

namespace host
{
    namespace
    {
        Colour ColourOf(ExitCode code)
        {
            return code == ExitCode::Done ? Colour::Good : code == ExitCode::Failed ? Colour::Bad : Colour::Caution;
        }

        // A sentence or two, as a paragraph where somebody reads it. The words before the first colon or quotation mark
        // say what came of it.
        void PrintParagraph(std::string const& text, std::optional<Colour> colourOfHead = std::nullopt)
        {
            auto const wrapped = OutputIsConsole() ? WrapColumns(text, OutputColumns() - 1) : text;
            auto const end = colourOfHead ? wrapped.find_first_of(":\"") : std::string::npos;
            Print((end == std::string::npos ? wrapped
                                            : Coloured(*colourOfHead, wrapped.substr(0, end)) + wrapped.substr(end)) +
                  "\n");
        }

        void PrintWarnings(std::vector<std::string> const& warnings)
        {
            for (auto const& warning : warnings)
            {
                PrintParagraph("Warning: " + warning, Colour::Caution);
            }
        }
    } // namespace

    ExitCode PrintOutcome(Outcome const& outcome, char const* command, OutputOptions const& options)
    {
        if (options.json)
        {
            Json object = {{"event", "outcome"},          {"command", command},
                           {"outcome", outcome.name},     {"exit_code", static_cast<int>(outcome.code)},
                           {"text", outcome.text},        {"next", outcome.next},
                           {"warnings", outcome.warnings}};
            object.update(outcome.facts);
            PrintJson(object);
            return outcome.code;
        }
        PrintParagraph(outcome.text, ColourOf(outcome.code));
        PrintWarnings(outcome.warnings);
        if (!options.quiet && !outcome.next.empty())
        {
            PrintParagraph(outcome.next);
        }
        return outcome.code;
    }

    void PrintLesson(Lesson const& lesson, OutputOptions const& options)
    {
        if (options.json)
        {
            Json object = {
                {"event", "learnt"}, {"outcome", lesson.name}, {"text", lesson.text}, {"warnings", lesson.warnings}};
            object.update(lesson.facts);
            PrintJson(object);
            return;
        }
        PrintParagraph(lesson.text);
        PrintWarnings(lesson.warnings);
    }

    void PrintCourse(Session const& session, std::string const& asked, Clock::duration taken)
    {
        std::string names;
        for (auto const& name : SeenNames(session.Log().Records(), asked))
        {
            names += (names.empty() ? "" : ", ") + Quoted(name);
        }
        auto const milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(taken).count();
        PrintError((names.empty() ? "" : "The library's search looked at " + names + ".\n") + "The answer took " +
                   std::to_string(milliseconds) + " ms; the library logged " +
                   std::to_string(session.Log().Records().size()) + " records.\n");
    }

    void PrintRecords(Session const& session, OutputOptions const& options)
    {
        if (options.json)
        {
            for (auto const& record : session.Log().Records())
            {
                PrintJson({{"event", "record"},
                           {"time", record.time},
                           {"line", record.line},
                           {"function", record.function},
                           {"message", record.message}});
            }
        }
        else
        {
            std::istringstream lines(session.Log().Text());
            std::string shown;
            for (std::string line; std::getline(lines, line);)
            {
                shown += line.empty() ? "" : "  " + Harmless(line) + "\n";
            }
            Print("\nWhat the library logged (log.log):\n" + (shown.empty() ? "  nothing\n" : shown));
        }
        if (!session.Log().CopyFailure().empty())
        {
            PrintError("The records are not in log.log: it cannot be written in this folder (" +
                       Harmless(session.Log().CopyFailure()) + ").\n");
        }
    }
} // namespace host
