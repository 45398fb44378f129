// The library's data store as a file, "MyLEData": a line "name=LE address" an entry. It is the user's.
#pragma once

#include <filesystem>
#include <string>

namespace host
{
    inline constexpr char dataFile[] = "MyLEData";

    // What the library reads for this name; empty where there is nothing.
    std::string EntryIn(std::string const& text, std::string const& name);

    // The text with this entry in place of any other for the name.
    std::string WithEntry(std::string const& text, std::string const& name, std::string const& value);

    // Whether the file's format can keep an entry for this name.
    bool CanKeep(std::string const& name);

    // Empty where there is no file. Throws std::runtime_error, which names it, where it cannot be read.
    std::string ReadFileText(std::filesystem::path const& file);

    // In one step: a crash leaves the old file or the new one. Throws std::runtime_error, which names the file.
    void ReplaceFileText(std::filesystem::path const& file, std::string const& text);
} // namespace host
