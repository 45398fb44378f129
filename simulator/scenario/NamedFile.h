// The files that environment variables name.
#pragma once

#include <filesystem>
#include <string>

namespace simulator
{
    // Empty when the variable is.
    std::filesystem::path FileNamedBy(char const* variable);

    std::string Utf8Name(std::filesystem::path const& path);

    // Throws ScenarioError where the file cannot be opened.
    std::string ReadText(std::filesystem::path const& path);

    // On standard error.
    void Complain(std::string const& fault);
} // namespace simulator
