#include "tests/host/Folders.h"

#include <windows.h>

std::filesystem::path UseOwnTempFolder()
{
    auto const folder = std::filesystem::current_path() / "temp";
    std::filesystem::create_directory(folder);
    SetEnvironmentVariableW(L"TMP", folder.c_str());
    return folder;
}

std::set<std::string> NamesIn(std::filesystem::path const& folder)
{
    std::set<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator{folder})
    {
        names.insert(entry.path().filename().string());
    }
    return names;
}
