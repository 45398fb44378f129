#include "tests/host/ChildProcess.h"

#include "tests/support/LogFile.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace test
{
    namespace
    {
        constexpr DWORD limitMs = 40'000;
        constexpr DWORD noExitCode = MAXDWORD;

        std::wstring ToUtf16(std::string const& text)
        {
            int const length = static_cast<int>(text.size());
            std::wstring utf16(
                static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)), L'\0');
            MultiByteToWideChar(CP_UTF8, 0, text.data(), length, utf16.data(), static_cast<int>(utf16.size()));
            return utf16;
        }
    } // namespace

    std::filesystem::path BinFolder()
    {
        std::wstring path(32'768, L'\0');
        path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
        return std::filesystem::path(path).parent_path();
    }

    HANDLE FileForChild(wchar_t const* name)
    {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        return CreateFileW(name, GENERIC_WRITE, FILE_SHARE_READ, &inheritable, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
    }

    PROCESS_INFORMATION StartChild(std::filesystem::path const& program, Arguments const& arguments, HANDLE output,
                                   HANDLE error, DWORD flags)
    {
        auto commandLine = L"\"" + program.native() + L"\"";
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
        if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr,
                            &startup, &process))
        {
            ADD_FAILURE() << program << " does not start: Windows error " << GetLastError();
        }
        return process;
    }

    DWORD WaitForEnd(PROCESS_INFORMATION const& process)
    {
        DWORD exitCode = noExitCode;
        if (!process.hProcess)
        {
            return exitCode;
        }
        if (WaitForSingleObject(process.hProcess, limitMs) != WAIT_OBJECT_0)
        {
            ADD_FAILURE() << "process " << process.dwProcessId << " still runs after " << limitMs << " ms";
            TerminateProcess(process.hProcess, noExitCode);
            WaitForSingleObject(process.hProcess, limitMs);
        }
        GetExitCodeProcess(process.hProcess, &exitCode);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return exitCode;
    }

    ChildResult RunChild(std::filesystem::path const& program, Arguments const& arguments)
    {
        // Files, not pipes: nobody has to read while the child runs.
        auto const output = FileForChild(L"stdout.txt");
        auto const error = FileForChild(L"stderr.txt");
        auto const exitCode = WaitForEnd(StartChild(program, arguments, output, error));
        CloseHandle(output);
        CloseHandle(error);
        return {exitCode, ReadFile("stdout.txt"), ReadFile("stderr.txt")};
    }

    ChildResult RunVorlinkctl(Arguments const& arguments)
    {
        return RunChild(BinFolder() / "vorlinkctl.exe", arguments);
    }
} // namespace test
