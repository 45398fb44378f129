#pragma once

#include <filesystem>
#include <set>
#include <string>

// The programs that this test starts from now on keep their temporary files in here, an empty folder.
std::filesystem::path UseOwnTempFolder();

std::set<std::string> NamesIn(std::filesystem::path const& folder);
