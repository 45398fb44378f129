// What goes to standard output meanwhile, as bytes. For tests of processes without a console.
#pragma once

#include "tests/support/LogFile.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cstdio>
#include <iostream>
#include <string>

namespace test
{
    // A failure that is found while the object lives is printed to the file as well: look for it behind.
    class RedirectedOutput
    {
    public:
        explicit RedirectedOutput(char const* file)
        {
            Flush();
            m_before = _dup(standardOutput);
            int const target = _open(file, _O_CREAT | _O_TRUNC | _O_WRONLY | _O_TEXT, _S_IREAD | _S_IWRITE);
            _dup2(target, standardOutput);
            _close(target);
        }

        ~RedirectedOutput()
        {
            Flush();
            _dup2(m_before, standardOutput);
            _close(m_before);
        }

        RedirectedOutput(RedirectedOutput const&) = delete;
        RedirectedOutput& operator=(RedirectedOutput const&) = delete;

    private:
        static void Flush()
        {
            std::cout.flush();
            std::fflush(stdout);
        }

        static constexpr int standardOutput = 1;
        int m_before;
    };

    class CapturedOutput : RedirectedOutput
    {
    public:
        CapturedOutput()
            : RedirectedOutput(name)
        {
        }

        // Read it when the object is gone.
        static std::string Bytes()
        {
            return ReadFile(name);
        }

    private:
        static constexpr char name[] = "stdout.txt";
    };

    // Output that nobody wants.
    class SilentOutput : RedirectedOutput
    {
    public:
        SilentOutput()
            : RedirectedOutput("NUL")
        {
            std::setvbuf(stdout, nullptr, _IOFBF, 65536); // it looks like a console, which gets each piece by itself
        }
    };

    template <typename Action>
    std::string OutputOf(Action action)
    {
        {
            CapturedOutput const captured;
            action();
        }
        return CapturedOutput::Bytes();
    }
} // namespace test
