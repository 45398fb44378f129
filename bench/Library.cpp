#include "bench/Library.h"

#include <array>
#include <stdexcept>

namespace bench
{
    Module LoadModule(std::filesystem::path const& file)
    {
        Module module(LoadLibraryW(file.c_str()));
        if (!module)
        {
            throw std::runtime_error(file.string() + " does not load");
        }
        return module;
    }

    std::unique_ptr<Vorlink> MakeVorlink(Module const& module)
    {
        using Factory = std::unique_ptr<Vorlink> (*)();
        auto const address = GetProcAddress(module.get(), "getVorlinkPtr");
        if (!address)
        {
            throw std::runtime_error("the library has no getVorlinkPtr");
        }
        return reinterpret_cast<Factory>(reinterpret_cast<void*>(address))();
    }

    std::filesystem::path ProgramFolder()
    {
        std::array<wchar_t, 1024> path{};
        GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        return std::filesystem::path(path.data()).parent_path();
    }

    Vorlink& TheLibrary()
    {
        // Neither is given back: what the platform has under way may come to both at the end of the process.
        static auto* const vorlink = MakeVorlink(*new Module(LoadModule(ProgramFolder() / "vorlink.dll"))).release();
        return *vorlink;
    }
} // namespace bench
