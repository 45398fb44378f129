#pragma once

namespace host
{
    // What the program tells its caller. The help text lists this table.
    enum class ExitCode : int
    {
        Done = 0,
        Failed = 1,
        Usage = 2,
        NotFound = 3,
        Refused = 4,
        NoAnswer = 5,
        Declined = 6,
    };

    struct ExitCodeMeaning
    {
        ExitCode code;
        char const* meaning;
    };

    inline constexpr ExitCodeMeaning exitCodeMeanings[] = {
        {ExitCode::Done, "done, as asked (or help or version was shown)"},
        {ExitCode::Failed, "the platform, the library or the output failed, or a check found a fault"},
        {ExitCode::Usage, "the command line is wrong"},
        {ExitCode::NotFound, "no device (of that name) was found, or none answered"},
        {ExitCode::Refused, "the device was found, but not paired or unpaired"},
        {ExitCode::NoAnswer, "no answer within the time limit, or before Ctrl+C"},
        {ExitCode::Declined, "the user said no, or could not be asked; nothing was done"},
    };
} // namespace host
