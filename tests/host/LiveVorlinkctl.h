#pragma once

#include "tests/host/ChildProcess.h"

#include <windows.h>

#include <string>

namespace test
{
    // A vorlinkctl that runs while the test looks on, with a pipe for its output, the file stderr.txt for its
    // errors and a console without a window.
    class LiveVorlinkctl
    {
    public:
        explicit LiveVorlinkctl(Arguments const& arguments);
        ~LiveVorlinkctl();
        LiveVorlinkctl(LiveVorlinkctl const&) = delete;
        LiveVorlinkctl& operator=(LiveVorlinkctl const&) = delete;

        // Waits for the line, or for the program's end. The line feed is not part of it.
        std::string ReadLine();

        bool Runs() const;

        // Waits until "log.log" holds the text, or for the program's end.
        void WaitForLog(std::string const& text) const;

        void PressCtrlC() const;

        // Ends it at once, and waits for that.
        void Kill();

        // Waits for the end. The output is what has not been read; the errors are left in their file.
        ChildResult Finish();

    private:
        HANDLE m_output = nullptr;
        PROCESS_INFORMATION m_process{};
    };
} // namespace test
