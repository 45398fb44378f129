#pragma once

#include <windows.h>

#include <filesystem>
#include <set>
#include <string>

namespace test
{
    // The programs that this test starts from now on keep their temporary files in here, an empty folder.
    inline std::filesystem::path UseOwnTempFolder()
    {
        auto folder = std::filesystem::current_path() / "temp";
        std::filesystem::create_directory(folder);
        SetEnvironmentVariableW(L"TMP", folder.c_str());
        return folder;
    }

    inline std::set<std::string> NamesIn(std::filesystem::path const& folder)
    {
        std::set<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator(folder))
        {
            names.insert(entry.path().filename().string());
        }
        return names;
    }
} // namespace test
