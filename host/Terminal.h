// Standard output and error, in UTF-8 whether they are a console, a file or a pipe.
#pragma once

#include "host/ExitCode.h"
#include "host/Json.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace host
{
    // From here on standard output is Print's alone: what the library writes there by the C and C++ streams, its data
    // store and listings, goes nowhere.
    void OpenTerminal();

    void Print(std::string_view text);

    // On a line of its own.
    void PrintJson(Json const& object);

    // Whether some of it has been lost: nobody may read any more.
    bool IsOutputLost();

    void PrintError(std::string_view text);

    bool OutputIsConsole();
    bool ErrorIsConsole();

    // Whether somebody at a console can be asked.
    bool InputIsConsole();

    // The line that the user types, without its end; nothing where there is none.
    std::string ReadInputLine();

    // Of the console; 80 where there is none.
    std::size_t OutputColumns();
    std::size_t ErrorColumns();

    enum class ColourChoice
    {
        Auto, // on a console that takes them, unless the environment's NO_COLOR says no
        Always,
        Never,
    };

    void ChooseColours(ColourChoice choice);

    enum class Colour
    {
        Good,
        Bad,
        Caution,
        Faint,
        Bold,
        First, // and the others, to tell kinds apart
        Second,
        Third,
        Fourth,
    };

    // The text as it is where standard output shows no colours.
    std::string Coloured(Colour colour, std::string_view text);

    // Ends the process at once, running nobody's destructors: a thread of the library may still be at work. Output that
    // was lost makes it a failure.
    [[noreturn]] void EndProcess(ExitCode code);
} // namespace host
