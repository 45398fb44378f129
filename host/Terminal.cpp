#include "host/Terminal.h"

#include <windows.h>

#include <cstdio>

namespace host
{
    namespace
    {
        // The console belongs to the shell as well, which gets its own code page back.
        UINT codePageBefore = 0;

        HANDLE output = INVALID_HANDLE_VALUE;

        // One call for the whole text, so that no character is split on its way to the console.
        void Write(HANDLE stream, std::string_view text)
        {
            DWORD written = 0;
            WriteFile(stream, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
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
    }

    void Print(std::string_view text)
    {
        Write(output, text);
    }

    void PrintError(std::string_view text)
    {
        Write(GetStdHandle(STD_ERROR_HANDLE), text);
    }

    bool ErrorIsConsole()
    {
        DWORD mode = 0;
        return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
    }

    void EndProcess(ExitCode code)
    {
        if (codePageBefore != 0)
        {
            SetConsoleOutputCP(codePageBefore);
        }
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
        for (;;)
        {
            Sleep(INFINITE);
        }
    }
} // namespace host
