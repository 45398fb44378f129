#include "host/doctor/Finding.h"

#include "host/Text.h"

#include <algorithm>

namespace host
{
    namespace
    {
        // In the order of Verdict.
        constexpr char const* verdicts[] = {"ok", "unknown", "warning", "problem"};

        // Each line begins with so many blanks.
        std::string Indented(std::string const& text, std::size_t columns, std::size_t blanks)
        {
            std::string const indent(blanks, ' ');
            std::string indented = indent;
            for (char const each : WrapColumns(text, columns > blanks ? columns - blanks : 1))
            {
                indented += each;
                indented += each == '\n' ? indent : "";
            }
            return indented + "\n";
        }

        std::string Counted(std::size_t count, std::string const& what)
        {
            return (count == 0 ? "no" : std::to_string(count)) + " " + what + (count == 1 ? "" : "s");
        }

        std::size_t Count(std::vector<Finding> const& findings, Verdict verdict)
        {
            return static_cast<std::size_t>(std::ranges::count(findings, verdict, &Finding::verdict));
        }

        enum class Line
        {
            Entry,
            Empty,
            Malformed,
        };

        // As the library reads it: it skips a line without a name or a value, and drops what follows a second "=".
        Line KindOf(std::string_view line)
        {
            auto const parts = std::ranges::count(line, '=') + 1;
            bool const hasBoth = parts == 2 && line.front() != '=' && line.back() != '=';
            return line.empty() ? Line::Empty : hasBoth ? Line::Entry : Line::Malformed;
        }
    } // namespace

    char const* TextOf(Verdict verdict)
    {
        return verdicts[static_cast<std::size_t>(verdict)];
    }

    std::string LayOut(Finding const& finding, std::size_t columns)
    {
        constexpr std::size_t verdictWidth = 9;
        constexpr std::size_t checkWidth = 11;
        constexpr std::size_t narrow = 60;
        auto const text = Harmless(finding.text);
        auto const hint = finding.hint.empty() ? "" : "-> " + Harmless(finding.hint);
        auto const verdict = PadColumns(TextOf(finding.verdict), verdictWidth);
        bool const isNarrow = columns < narrow;
        auto const blanks = isNarrow ? 2 : verdictWidth + checkWidth;
        auto const found = Indented(text, columns, blanks);
        auto const head = isNarrow ? verdict + finding.check + "\n" + found
                                   : verdict + PadColumns(finding.check, checkWidth) + found.substr(blanks);
        return head + (hint.empty() ? "" : Indented(hint, columns, blanks));
    }

    std::string Summary(std::vector<Finding> const& findings)
    {
        auto const warnings = Count(findings, Verdict::Warning);
        auto text = Counted(Count(findings, Verdict::Problem), "problem") +
                    (warnings == 0 ? "" : ", " + Counted(warnings, "warning")) + ".";
        text.front() = text.front() == 'n' ? 'N' : text.front();
        return text;
    }

    bool HasProblem(std::vector<Finding> const& findings)
    {
        return Count(findings, Verdict::Problem) != 0;
    }

    Finding CheckEntries(std::string_view text)
    {
        std::size_t entries = 0;
        std::size_t malformed = 0;
        while (!text.empty())
        {
            auto const line = text.substr(0, text.find('\n'));
            text.remove_prefix(std::min(text.size(), line.size() + 1));
            auto const kind = KindOf(line);
            entries += kind == Line::Entry ? 1 : 0;
            malformed += kind == Line::Malformed ? 1 : 0;
        }
        Finding finding{"data file", Verdict::Ok, Counted(entries, "LE device") + " in MyLEData", {}};
        if (malformed != 0)
        {
            finding.verdict = Verdict::Warning;
            finding.text += ", and " + Counted(malformed, "malformed line");
            finding.hint =
                "A line is a name, one \"=\" and an LE address. Mend or delete the others: the library takes "
                "them for something else, or loses them when it saves.";
        }
        return finding;
    }
} // namespace host
