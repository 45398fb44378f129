#include "tests/host/child_process.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace
{
    constexpr DWORD limitMs = 30'000;

    std::wstring ToUtf16(std::string const& text)
    {
        int const length = static_cast<int>(text.size());
        std::wstring utf16(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)),
                           L'\0');
        MultiByteToWideChar(CP_UTF8, 0, text.data(), length, utf16.data(), static_cast<int>(utf16.size()));
        return utf16;
    }

    // Files, not pipes: nobody has to read while the child runs.
    class CaptureFile
    {
    public:
        explicit CaptureFile(wchar_t const* fileName)
            : name{fileName}
        {
            SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
            handle = CreateFileW(name, GENERIC_WRITE, FILE_SHARE_READ, &inheritable, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL, nullptr);
        }

        HANDLE Handle() const
        {
            return handle;
        }

        std::string CloseAndRead()
        {
            CloseHandle(handle);
            std::ifstream file{std::filesystem::path{name}, std::ios::binary};
            return {std::istreambuf_iterator<char>{file}, {}};
        }

    private:
        wchar_t const* name;
        HANDLE handle;
    };
} // namespace

std::filesystem::path BinFolder()
{
    std::wstring path(32'768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path{path}.parent_path();
}

ChildResult RunChild(std::filesystem::path const& program, std::vector<std::string> const& arguments)
{
    std::wstring commandLine = L"\"" + program.native() + L"\"";
    for (auto const& argument : arguments)
    {
        commandLine.append(L" \"").append(ToUtf16(argument)).append(L"\"");
    }
    CaptureFile output{L"stdout.txt"};
    CaptureFile error{L"stderr.txt"};
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output.Handle();
    startup.hStdError = error.Handle();

    PROCESS_INFORMATION process{};
    ChildResult result{~DWORD{0}, {}, {}};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process))
    {
        ADD_FAILURE() << program << " does not start: Windows error " << GetLastError();
        return result;
    }
    if (WaitForSingleObject(process.hProcess, limitMs) != WAIT_OBJECT_0)
    {
        ADD_FAILURE() << program << " still runs after " << limitMs << " ms";
        TerminateProcess(process.hProcess, ~UINT{0});
        WaitForSingleObject(process.hProcess, limitMs);
    }
    GetExitCodeProcess(process.hProcess, &result.exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    result.output = output.CloseAndRead();
    result.error = error.CloseAndRead();
    return result;
}

ChildResult RunVorlinkctl(std::vector<std::string> const& arguments)
{
    return RunChild(BinFolder() / "vorlinkctl.exe", arguments);
}
