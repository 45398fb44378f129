// The library, loaded as a host loads it.
#pragma once

#include "interface/Vorlink.h"

#include <windows.h>

#include <filesystem>
#include <memory>
#include <type_traits>

namespace bench
{
    struct ModuleEnd
    {
        using pointer = HMODULE;
        void operator()(HMODULE module) const noexcept
        {
            FreeLibrary(module);
        }
    };

    using Module = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleEnd>;

    // Throws when there is no such file, or it cannot be loaded.
    Module LoadModule(std::filesystem::path const& file);

    std::unique_ptr<Vorlink> MakeVorlink(Module const& module);

    std::filesystem::path ProgramFolder();

    // vorlink.dll from the program's folder; stays loaded.
    Vorlink& TheLibrary();
} // namespace bench
