#include "host/Library.h"

#include "host/WideText.h"

#include <windows.h>

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace host
{
    namespace
    {
        std::filesystem::path OwnFolder()
        {
            std::wstring path(32'768, L'\0'); // longer than any path
            path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
            return std::filesystem::path(path).parent_path();
        }

        std::runtime_error Unusable(std::string const& problem, std::filesystem::path const& library)
        {
            return std::runtime_error(problem + "\nPut the " + ToUtf8(library.filename().native()) +
                                      " of the same build beside vorlinkctl.exe.");
        }
    } // namespace

    void* LoadOwn(wchar_t const* library, char const* function)
    {
        auto const folder = OwnFolder();
        auto const path = folder / library;
        auto const name = ToUtf8(path.native());
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored))
        {
            throw Unusable("There is no " + ToUtf8(library) + " in " + ToUtf8(folder.native()) + ".", path);
        }
        HMODULE const module =
            LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
        if (!module)
        {
            throw Unusable(name + " does not load (Windows error " + std::to_string(GetLastError()) + ").", path);
        }
        FARPROC const found = GetProcAddress(module, function);
        if (!found)
        {
            throw Unusable(name + " does not export " + function + ".", path);
        }
        // As a pointer to data: compilers warn of a cast between unlike function types.
        return reinterpret_cast<void*>(found);
    }

    std::string OwnVersion(wchar_t const* library)
    {
        auto const path = OwnFolder() / library;
        DWORD ignored = 0;
        std::vector<std::byte> data(GetFileVersionInfoSizeW(path.c_str(), &ignored));
        VS_FIXEDFILEINFO* info = nullptr;
        UINT size = 0;
        if (data.empty() || !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) ||
            !VerQueryValueW(data.data(), L"\\", reinterpret_cast<void**>(&info), &size))
        {
            return {};
        }
        return std::to_string(HIWORD(info->dwFileVersionMS)) + "." + std::to_string(LOWORD(info->dwFileVersionMS)) +
               "." + std::to_string(HIWORD(info->dwFileVersionLS));
    }

    VorlinkFactory LoadVorlink()
    {
        return reinterpret_cast<VorlinkFactory>(LoadOwn(L"vorlink.dll", "getVorlinkPtr"));
    }
} // namespace host
