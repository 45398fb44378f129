// What a check has found. Nothing here needs Windows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
    enum class Verdict
    {
        Ok,
        Unknown, // it cannot be asked here
        Warning, // something will not work
        Problem, // nothing will work
    };

    struct Finding
    {
        std::string check; // "data file"
        Verdict verdict = Verdict::Ok;
        std::string text; // may come from a file or from the air
        std::string hint; // what to do about it
    };

    // "ok"
    char const* TextOf(Verdict verdict);

    // Lines that end with line feeds. The first one begins with the verdict.
    std::string LayOut(Finding const& finding, std::size_t columns);

    // "No problems, 1 warning."
    std::string Summary(std::vector<Finding> const& findings);

    bool HasProblem(std::vector<Finding> const& findings);

    // Of the text of the library's data store.
    Finding CheckEntries(std::string_view text);
} // namespace host
