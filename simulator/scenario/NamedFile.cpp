#include "simulator/scenario/NamedFile.h"

#include "simulator/scenario/Scenario.h"

#ifdef _WIN32
#include <windows.h>
#endif

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace simulator
{
    std::filesystem::path FileNamedBy(char const* variable)
    {
#ifdef _WIN32
        // Not std::getenv: it may have copied the environment before the program set the variable.
        std::wstring name(32768, L'\0');
        auto const wide = std::filesystem::path(variable).wstring();
        name.resize(GetEnvironmentVariableW(wide.c_str(), name.data(), static_cast<DWORD>(name.size())));
        return name;
#else
        auto const* const name = std::getenv(variable);
        return name ? name : "";
#endif
    }

    std::string Utf8Name(std::filesystem::path const& path)
    {
        auto const utf8 = path.u8string();
        return {utf8.begin(), utf8.end()};
    }

    std::string ReadText(std::filesystem::path const& path)
    {
        std::ifstream stream(path, std::ios::binary);
        if (!stream)
        {
            throw ScenarioError(Utf8Name(path) + ":0: the file cannot be opened");
        }
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    void Complain(std::string const& fault)
    {
        std::fprintf(stderr, "vorlink_simulator: %s\n", fault.c_str());
        std::fflush(stderr);
    }
} // namespace simulator
