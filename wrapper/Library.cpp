#include "wrapper/Library.h"

#include "wrapper/Failure.h"
#include "wrapper/Text.h"

#include <windows.h>
#include <winver.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

namespace wrapper
{
    namespace
    {
        std::atomic<HMODULE> loaded = nullptr;

        vorlink_version_number MakeVersion(std::uint32_t major, std::uint32_t minor, std::uint32_t patch)
        {
            vorlink_version_number version{major, minor, patch, ""};
            std::snprintf(version.text, sizeof version.text, "%u.%u.%u", major, minor, patch);
            return version;
        }

        // Of the module's version resource; all zero when it has none.
        vorlink_version_number VersionOf(HMODULE module)
        {
            // Behind three lengths and the key, at a multiple of four.
            constexpr std::size_t offset = 40;
            HRSRC const resource = FindResourceW(module, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
            HGLOBAL const data = resource ? LoadResource(module, resource) : nullptr;
            VS_FIXEDFILEINFO info{};
            if (!data || SizeofResource(module, resource) < offset + sizeof info)
            {
                return {};
            }
            std::memcpy(&info, static_cast<std::byte const*>(LockResource(data)) + offset, sizeof info);
            return MakeVersion(HIWORD(info.dwFileVersionMS), LOWORD(info.dwFileVersionMS),
                               HIWORD(info.dwFileVersionLS));
        }

        // Of the module that holds this code, which stays loaded from now on.
        std::filesystem::path OwnFolder()
        {
            HMODULE module = nullptr;
            GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                               reinterpret_cast<LPCWSTR>(&loaded), &module);
            std::wstring path(32'768, L'\0'); // longer than any path
            path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
            return std::filesystem::path(path).parent_path();
        }

        using Factory = decltype(&getVorlinkPtr);

        struct Module
        {
            HMODULE handle;
            std::string path; // UTF-8
        };

        [[noreturn]] void Refuse(Module const& module, std::string const& reason)
        {
            if (module.handle)
            {
                FreeLibrary(module.handle); // none of its code has run but what loading runs
            }
            throw Failure{VORLINK_LIBRARY_UNUSABLE, module.path + " " + reason};
        }

        Factory FindFactory(Module const& module)
        {
            FARPROC const factory = GetProcAddress(module.handle, "getVorlinkPtr");
            if (!factory)
            {
                Refuse(module, "does not export getVorlinkPtr.");
            }
            auto const version = VersionOf(module.handle);
            if (version.major != WrapperVersion().major)
            {
                Refuse(module, "has the version \"" + std::string(version.text) + "\", which does not go with " +
                                   WrapperVersion().text + " of vorlink_c.dll.");
            }
            // By way of a pointer to data: compilers warn of a cast between unlike function types.
            return reinterpret_cast<Factory>(reinterpret_cast<void*>(factory));
        }

        Vorlink& Load()
        {
            auto const folder = OwnFolder();
            auto const path = folder / L"vorlink.dll";
            std::error_code ignored;
            if (!std::filesystem::exists(path, ignored))
            {
                throw Failure{VORLINK_LIBRARY_NOT_FOUND, "There is no vorlink.dll in " + ToUtf8(folder.native()) + "."};
            }
            Module module = {nullptr, ToUtf8(path.native())};
            module.handle =
                LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
            if (!module.handle)
            {
                DWORD const error = GetLastError();
                Refuse(module, "does not load (Windows error " + std::to_string(error) + ").");
            }
            auto const factory = FindFactory(module);
            Vorlink& vorlink = *factory().release();
            loaded = module.handle;
            return vorlink;
        }
    } // namespace

    Vorlink& Library()
    {
        static Vorlink& library = Load();
        return library;
    }

    vorlink_version_number LibraryVersion()
    {
        HMODULE const module = loaded;
        return module ? VersionOf(module) : vorlink_version_number{};
    }

    vorlink_version_number WrapperVersion()
    {
        return MakeVersion(VORLINK_VERSION_MAJOR, VORLINK_VERSION_MINOR, VORLINK_VERSION_PATCH);
    }
} // namespace wrapper
