#include "host/Terminal.h"

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdio>

namespace host
{
    namespace
    {
        // The console belongs to the shell as well, which gets its own code page back.
        UINT codePageBefore = 0;

        HANDLE output = INVALID_HANDLE_VALUE;
        bool coloured = false;
        std::atomic<DWORD> outputError = ERROR_SUCCESS;

        // One call for the whole text, so that no character is split on its way to the console.
        DWORD Write(HANDLE stream, std::string_view text)
        {
            while (!text.empty())
            {
                DWORD written = 0;
                if (!WriteFile(stream, text.data(), static_cast<DWORD>(text.size()), &written, nullptr))
                {
                    return GetLastError();
                }
                if (written == 0)
                {
                    return ERROR_WRITE_FAULT;
                }
                text.remove_prefix(written);
            }
            return ERROR_SUCCESS;
        }

        bool IsConsole(HANDLE stream)
        {
            DWORD mode = 0;
            return GetConsoleMode(stream, &mode) != 0;
        }

        std::size_t ColumnsOfConsole(HANDLE stream)
        {
            CONSOLE_SCREEN_BUFFER_INFO info{};
            if (!GetConsoleScreenBufferInfo(stream, &info))
            {
                return 80;
            }
            auto const columns = info.srWindow.Right - info.srWindow.Left + 1;
            return columns > 0 ? static_cast<std::size_t>(columns) : 80;
        }

        bool TakesColours(HANDLE stream)
        {
            DWORD mode = 0;
            return GetConsoleMode(stream, &mode) && SetConsoleMode(stream, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) &&
                   GetEnvironmentVariableW(L"NO_COLOR", nullptr, 0) <= 1; // set, and not to nothing
        }
    } // namespace

    void OpenTerminal()
    {
        codePageBefore = GetConsoleOutputCP();
        SetConsoleOutputCP(CP_UTF8);
        // The C stream closes its own handle: this one is another.
        DuplicateHandle(GetCurrentProcess(), GetStdHandle(STD_OUTPUT_HANDLE), GetCurrentProcess(), &output, 0, FALSE,
                        DUPLICATE_SAME_ACCESS);
        (void)std::freopen("NUL", "w", stdout);
        ChooseColours(ColourChoice::Auto);
    }

    void Print(std::string_view text)
    {
        if (auto const error = Write(output, text); error != ERROR_SUCCESS)
        {
            outputError = error;
        }
    }

    bool IsOutputLost()
    {
        return outputError != ERROR_SUCCESS;
    }

    void PrintJson(Json const& object)
    {
        Print(object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n");
    }

    void PrintError(std::string_view text)
    {
        (void)Write(GetStdHandle(STD_ERROR_HANDLE), text);
    }

    bool OutputIsConsole()
    {
        return IsConsole(output);
    }

    bool ErrorIsConsole()
    {
        return IsConsole(GetStdHandle(STD_ERROR_HANDLE));
    }

    bool InputIsConsole()
    {
        return IsConsole(GetStdHandle(STD_INPUT_HANDLE));
    }

    std::string ReadInputLine()
    {
        std::array<char, 256> line{};
        DWORD size = 0;
        if (!ReadFile(GetStdHandle(STD_INPUT_HANDLE), line.data(), static_cast<DWORD>(line.size()), &size, nullptr))
        {
            return {};
        }
        std::string_view const text(line.data(), size);
        return std::string(text.substr(0, text.find_first_of("\r\n")));
    }

    std::size_t OutputColumns()
    {
        return ColumnsOfConsole(output);
    }

    std::size_t ErrorColumns()
    {
        return ColumnsOfConsole(GetStdHandle(STD_ERROR_HANDLE));
    }

    void ChooseColours(ColourChoice choice)
    {
        coloured = choice == ColourChoice::Always || (choice == ColourChoice::Auto && TakesColours(output));
    }

    std::string Coloured(Colour colour, std::string_view text)
    {
        // In the order of the enumeration.
        constexpr std::array codes = {"32", "31", "33", "90", "1", "36", "35", "34", "33"};
        if (!coloured)
        {
            return std::string(text);
        }
        return std::string("\x1b[") + codes.at(static_cast<std::size_t>(colour)) + "m" + std::string(text) + "\x1b[0m";
    }

    void EndProcess(ExitCode code)
    {
        if (codePageBefore != 0)
        {
            SetConsoleOutputCP(codePageBefore);
        }
        auto const error = outputError.load();
        if (error != ERROR_SUCCESS)
        {
            // Nobody reads any more: no news to whoever has closed the pipe.
            bool const closed =
                error == ERROR_NO_DATA || error == ERROR_BROKEN_PIPE || error == ERROR_PIPE_NOT_CONNECTED;
            PrintError(closed ? "" : "vorlinkctl: output was lost (Windows error " + std::to_string(error) + ").\n");
            code = ExitCode::Failed;
        }
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
        for (;;)
        {
            Sleep(INFINITE);
        }
    }
} // namespace host
