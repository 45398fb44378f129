#include "host/doctor/SystemChecks.h"

#include "host/WideText.h"

#include <windows.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>

namespace host
{
    namespace
    {
        using Path = std::filesystem::path;

        constexpr char toolHint[] =
            "Without its listing the library learns of no LE side when it pairs, and leaves that side "
            "paired when it unpairs.";

        // In the folder; it goes when it is closed.
        HANDLE MakeTemporaryFile(Path const& folder)
        {
            auto const name = L"vorlinkctl-" + std::to_wstring(GetCurrentProcessId()) + L".tmp";
            SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
            return CreateFileW((folder / name).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                               &inheritable, CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        }

        // How many bytes it prints; nothing when it does not end in time. Without a console, whose own process would
        // hold the file open for longer.
        std::optional<LONGLONG> RunTool(Path const& tool, std::chrono::milliseconds limit)
        {
            auto const output = MakeTemporaryFile(std::filesystem::temp_directory_path());
            if (output == INVALID_HANDLE_VALUE)
            {
                throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
            }
            auto line = L"\"" + tool.native() + L"\" /enum-devices";
            STARTUPINFOW startup{};
            startup.cb = sizeof startup;
            startup.dwFlags = STARTF_USESTDHANDLES;
            startup.hStdOutput = output;
            PROCESS_INFORMATION process{};
            if (!CreateProcessW(tool.c_str(), line.data(), nullptr, nullptr, TRUE, DETACHED_PROCESS, nullptr, nullptr,
                                &startup, &process))
            {
                auto const error = static_cast<int>(GetLastError());
                CloseHandle(output);
                throw std::system_error(error, std::system_category());
            }
            bool const ended =
                WaitForSingleObject(process.hProcess, static_cast<DWORD>(limit.count())) == WAIT_OBJECT_0;
            if (!ended)
            {
                TerminateProcess(process.hProcess, 1);
            }
            LARGE_INTEGER size{};
            GetFileSizeEx(output, &size);
            CloseHandle(process.hThread);
            CloseHandle(process.hProcess);
            CloseHandle(output);
            return ended ? std::optional(size.QuadPart) : std::nullopt;
        }
    } // namespace

    Finding CheckTool(Path const& tool)
    {
        constexpr std::chrono::seconds limit{5};
        auto const name = ToUtf8(tool.native());
        auto const warning = [](std::string const& text) { return Finding{"tool", Verdict::Warning, text, toolHint}; };
        std::error_code ignored;
        if (!std::filesystem::exists(tool, ignored))
        {
            return warning("there is no " + name);
        }
        try
        {
            auto const size = RunTool(tool, limit);
            return !size        ? warning(name + " lists nothing within 5 s")
                   : *size == 0 ? warning(name + " lists nothing")
                                : Finding{"tool", Verdict::Ok, name + " lists devices", {}};
        }
        catch (std::system_error const& error)
        {
            return warning(name + " does not start: Windows error " + std::to_string(error.code().value()));
        }
    }

    Finding CheckDataFile(Path const& folder)
    {
        auto const file = folder / L"MyLEData";
        std::error_code ignored;
        if (!std::filesystem::exists(file, ignored))
        {
            return {"data file", Verdict::Ok, "no MyLEData in this folder: nothing has been learnt in it", {}};
        }
        std::ifstream stream(file, std::ios::binary);
        if (!stream)
        {
            return {"data file", Verdict::Warning, "MyLEData cannot be read",
                    "Close the program that holds it open, or take the file away if it is something else."};
        }
        return CheckEntries(std::string(std::istreambuf_iterator<char>(stream), {}));
    }

    Finding CheckFolder(Path const& folder)
    {
        auto const file = MakeTemporaryFile(folder);
        if (file == INVALID_HANDLE_VALUE)
        {
            return {"folder", Verdict::Warning,
                    "it cannot be written (Windows error " + std::to_string(GetLastError()) + ")",
                    "Start the program in another folder: here the library cannot keep its log and what it learns."};
        }
        CloseHandle(file);
        return {"folder", Verdict::Ok, "it can be written", {}};
    }

    Finding CheckCodePage(unsigned ansi, unsigned oem)
    {
        if (ansi == CP_UTF8 && oem == CP_UTF8)
        {
            return {"code page", Verdict::Ok, "UTF-8", {}};
        }
        return {
            "code page", Verdict::Warning, "ANSI " + std::to_string(ansi) + ", OEM " + std::to_string(oem),
            "Names outside ASCII may not be found: the manifest beside vorlinkctl.exe asks for UTF-8, which Windows 10 "
            "1903 and later grant."};
    }
} // namespace host
