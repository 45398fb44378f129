#include "tests/host/ChildProcess.h"

#include "tests/host/CaptureFile.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace
{
    constexpr DWORD limitMs = 40'000;

    std::wstring ToUtf16(std::string const& text)
    {
        int const length = static_cast<int>(text.size());
        std::wstring utf16(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)),
                           L'\0');
        MultiByteToWideChar(CP_UTF8, 0, text.data(), length, utf16.data(), static_cast<int>(utf16.size()));
        return utf16;
    }
} // namespace

std::filesystem::path BinFolder()
{
    std::wstring path(32'768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path{path}.parent_path();
}

PROCESS_INFORMATION StartChild(std::filesystem::path const& program, std::vector<std::string> const& arguments,
                               HANDLE output, HANDLE error, DWORD flags)
{
    std::wstring commandLine = L"\"" + program.native() + L"\"";
    for (auto const& argument : arguments)
    {
        commandLine.append(L" \"").append(ToUtf16(argument)).append(L"\"");
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
    startup.hStdError = error;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr, &startup,
                        &process))
    {
        ADD_FAILURE() << program << " does not start: Windows error " << GetLastError();
    }
    return process;
}

DWORD WaitForEnd(PROCESS_INFORMATION const& process)
{
    DWORD exitCode = ~DWORD{0};
    if (process.hProcess == nullptr)
    {
        return exitCode;
    }
    if (WaitForSingleObject(process.hProcess, limitMs) != WAIT_OBJECT_0)
    {
        ADD_FAILURE() << "process " << process.dwProcessId << " still runs after " << limitMs << " ms";
        TerminateProcess(process.hProcess, ~UINT{0});
        WaitForSingleObject(process.hProcess, limitMs);
    }
    GetExitCodeProcess(process.hProcess, &exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return exitCode;
}

ChildResult RunChild(std::filesystem::path const& program, std::vector<std::string> const& arguments)
{
    CaptureFile output{L"stdout.txt"};
    CaptureFile error{L"stderr.txt"};
    auto const exitCode = WaitForEnd(StartChild(program, arguments, output.Handle(), error.Handle()));
    return {exitCode, output.CloseAndRead(), error.CloseAndRead()};
}

ChildResult RunVorlinkctl(std::vector<std::string> const& arguments)
{
    return RunChild(BinFolder() / "vorlinkctl.exe", arguments);
}
