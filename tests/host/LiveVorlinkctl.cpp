#include "tests/host/LiveVorlinkctl.h"

#include <gtest/gtest.h>

namespace
{
    // Nothing when the pipe has ended.
    std::string ReadByte(HANDLE pipe)
    {
        char byte = 0;
        DWORD size = 0;
        return ReadFile(pipe, &byte, 1, &size, nullptr) && size == 1 ? std::string{byte} : std::string{};
    }
} // namespace

LiveVorlinkctl::LiveVorlinkctl(std::vector<std::string> const& arguments)
{
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    HANDLE programsEnd = nullptr;
    CreatePipe(&output, &programsEnd, &inheritable, 65'536); // for all that is not read before the end
    SetHandleInformation(output, HANDLE_FLAG_INHERIT, 0);
    HANDLE const nowhere = CreateFileW(L"NUL", GENERIC_WRITE, 0, &inheritable, OPEN_EXISTING, 0, nullptr);
    process = StartChild(BinFolder() / "vorlinkctl.exe", arguments, programsEnd, nowhere, CREATE_NO_WINDOW);
    CloseHandle(nowhere);
    CloseHandle(programsEnd);
}

LiveVorlinkctl::~LiveVorlinkctl()
{
    CloseHandle(output);
}

std::string LiveVorlinkctl::ReadLine()
{
    std::string line;
    for (auto byte = ReadByte(output); !byte.empty() && byte != "\n"; byte = ReadByte(output))
    {
        line += byte;
    }
    return line;
}

bool LiveVorlinkctl::Runs() const
{
    return WaitForSingleObject(process.hProcess, 0) == WAIT_TIMEOUT;
}

void LiveVorlinkctl::PressCtrlC() const
{
    // A console's programs all get the event: this one as well, which joins for it.
    SetConsoleCtrlHandler([](DWORD) -> BOOL { return TRUE; }, TRUE);
    FreeConsole();
    EXPECT_TRUE(AttachConsole(process.dwProcessId));
    EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0));
    FreeConsole();
}

ChildResult LiveVorlinkctl::Finish()
{
    auto const exitCode = WaitForEnd(process);
    // To the pipe's end, which the console's own process may hold open, like the current folder, for a moment longer.
    std::string rest;
    for (auto byte = ReadByte(output); !byte.empty(); byte = ReadByte(output))
    {
        rest += byte;
    }
    return {exitCode, rest, {}};
}
