// What goes to standard output meanwhile, as bytes. For tests of processes without a console.
#pragma once

#include "tests/support/log_file.h"

#include <cstdio>
#include <iostream>
#include <string>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace test
{
    // A failure that is found while the object lives is printed to the file as well: look for it behind.
    class CapturedOutput
    {
    public:
        CapturedOutput()
        {
            Flush();
            m_before = _dup(standardOutput);
            int const file = _open(name, _O_CREAT | _O_TRUNC | _O_WRONLY | _O_TEXT, _S_IREAD | _S_IWRITE);
            _dup2(file, standardOutput);
            _close(file);
        }

        ~CapturedOutput()
        {
            Flush();
            _dup2(m_before, standardOutput);
            _close(m_before);
        }

        CapturedOutput(CapturedOutput const&) = delete;
        CapturedOutput& operator=(CapturedOutput const&) = delete;

        // Read it when the object is gone.
        static std::string Bytes()
        {
            return ReadFile(name);
        }

    private:
        static void Flush()
        {
            std::cout.flush();
            std::fflush(stdout);
        }

        static constexpr int standardOutput = 1;
        static constexpr char name[] = "stdout.txt";
        int m_before;
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
