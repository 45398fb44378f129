// Lets a test stand in for a function of the system that one module imports.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>

namespace test
{
    // From now on the module's calls of `function` go to `replacement`; those of other modules do not.
    template <typename Function>
    void ReplaceImport(HMODULE module, char const* function, Function* replacement)
    {
        auto* const base = reinterpret_cast<std::byte*>(module);
        auto const at = [base](auto offset) { return static_cast<void*>(base + offset); };
        auto const* const dos = static_cast<IMAGE_DOS_HEADER const*>(at(0));
        auto const* const headers = static_cast<IMAGE_NT_HEADERS const*>(at(dos->e_lfanew));
        auto const& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        auto const* from = static_cast<IMAGE_IMPORT_DESCRIPTOR const*>(at(imports.VirtualAddress));
        for (; from->Name != 0; ++from)
        {
            auto const* name = static_cast<IMAGE_THUNK_DATA const*>(at(from->OriginalFirstThunk));
            auto* slot = static_cast<IMAGE_THUNK_DATA*>(at(from->FirstThunk));
            for (; name->u1.AddressOfData != 0; ++name, ++slot)
            {
                if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
                {
                    continue;
                }
                auto const* const import = static_cast<IMAGE_IMPORT_BY_NAME const*>(at(name->u1.AddressOfData));
                if (std::strcmp(reinterpret_cast<char const*>(import->Name), function) == 0)
                {
                    DWORD before = 0;
                    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
                    slot->u1.Function = reinterpret_cast<ULONG_PTR>(replacement);
                    VirtualProtect(slot, sizeof *slot, before, &before);
                    return;
                }
            }
        }
        throw std::runtime_error(std::string("the module does not import ") + function);
    }
} // namespace test
