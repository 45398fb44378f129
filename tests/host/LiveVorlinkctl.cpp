#include "tests/host/LiveVorlinkctl.h"

#include "tests/support/LogFile.h"

#include <gtest/gtest.h>

namespace test
{
    namespace
    {
        // Nothing when the pipe has ended.
        std::string ReadByte(HANDLE pipe)
        {
            char byte = 0;
            DWORD size = 0;
            return ::ReadFile(pipe, &byte, 1, &size, nullptr) && size == 1 ? std::string(1, byte) : std::string();
        }
    } // namespace

    LiveVorlinkctl::LiveVorlinkctl(Arguments const& arguments)
    {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        HANDLE programsEnd = nullptr;
        CreatePipe(&m_output, &programsEnd, &inheritable, 65'536); // for all that is not read before the end
        SetHandleInformation(m_output, HANDLE_FLAG_INHERIT, 0);
        auto const errors = FileForChild(L"stderr.txt");
        m_process = StartChild(BinFolder() / "vorlinkctl.exe", arguments, programsEnd, errors, CREATE_NO_WINDOW);
        CloseHandle(errors);
        CloseHandle(programsEnd);
    }

    LiveVorlinkctl::~LiveVorlinkctl()
    {
        CloseHandle(m_output);
    }

    std::string LiveVorlinkctl::ReadLine()
    {
        std::string line;
        for (auto byte = ReadByte(m_output); !byte.empty() && byte != "\n"; byte = ReadByte(m_output))
        {
            line += byte;
        }
        return line;
    }

    bool LiveVorlinkctl::Runs() const
    {
        return WaitForSingleObject(m_process.hProcess, 0) == WAIT_TIMEOUT;
    }

    void LiveVorlinkctl::WaitForLog(std::string const& text) const
    {
        while (test::ReadFile("log.log").find(text) == std::string::npos && Runs())
        {
            Sleep(5);
        }
    }

    void LiveVorlinkctl::PressCtrlC() const
    {
        // A console's programs all get the event: this one as well, which joins for it.
        SetConsoleCtrlHandler([](DWORD) -> BOOL { return TRUE; }, TRUE);
        FreeConsole();
        EXPECT_TRUE(AttachConsole(m_process.dwProcessId));
        EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0));
        FreeConsole();
    }

    void LiveVorlinkctl::Kill()
    {
        TerminateProcess(m_process.hProcess, 1);
        WaitForEnd(m_process);
    }

    ChildResult LiveVorlinkctl::Finish()
    {
        auto const exitCode = WaitForEnd(m_process);
        // To the pipe's end: the console's own process may hold it open, like the current folder, a moment longer.
        std::string rest;
        for (auto byte = ReadByte(m_output); !byte.empty(); byte = ReadByte(m_output))
        {
            rest += byte;
        }
        return {exitCode, rest, {}};
    }
} // namespace test
