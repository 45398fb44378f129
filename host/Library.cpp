#include "host/Library.h"

#include "host/WideText.h"

#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>

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

        std::runtime_error Unusable(std::string const& problem)
        {
            return std::runtime_error(problem + "\nPut the vorlink.dll of the same build beside vorlinkctl.exe.");
        }
    } // namespace

    VorlinkFactory LoadVorlink()
    {
        auto const folder = OwnFolder();
        auto const path = folder / L"vorlink.dll";
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored))
        {
            throw Unusable("There is no vorlink.dll in " + ToUtf8(folder.native()) + ".");
        }
        HMODULE const module =
            LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
        if (!module)
        {
            throw Unusable(ToUtf8(path.native()) + " does not load (Windows error " + std::to_string(GetLastError()) +
                           ").");
        }
        FARPROC const factory = GetProcAddress(module, "getVorlinkPtr");
        if (!factory)
        {
            throw Unusable(ToUtf8(path.native()) + " does not export getVorlinkPtr.");
        }
        // By way of a pointer to data: compilers warn of a cast between unlike function types.
        return reinterpret_cast<VorlinkFactory>(reinterpret_cast<void*>(factory));
    }
} // namespace host
