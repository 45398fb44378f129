// The library's LE data store and its file, in the current directory. What is read and written is echoed on
// standard output as key:value.
#pragma once

#include <cstddef>
#include <string>

namespace vorlink
{
    inline constexpr char leDataFile[] = "MyLEData";

    // Adds what the file holds; a key already there keeps its value. A file that cannot be opened adds nothing.
    void LoadLeData(std::string const& fileName);

    // Replaces the file by the store.
    void SaveLeData(std::string const& fileName);

    bool LeDataHasValue(std::string const& text);

    // How many entries went: 0 or 1.
    std::size_t EraseLeData(std::string const& key);

    // Empty when there is none.
    std::string GetLeData(std::string const& key);
} // namespace vorlink
