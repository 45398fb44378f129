// The library's LE data store and its file, in the current directory. What is read and written is echoed on
// standard output as key:value. Any thread may call any of these at any time.
#pragma once

#include <cstddef>
#include <string>

namespace vorlink
{
    inline constexpr char leDataFile[] = "MyLEData";

    // Adds what the file holds; a key already there keeps its value. A file that cannot be opened adds nothing.
    void LoadLeData(std::string const& fileName);

    // Replaces the file by the store, in one step where the system lets it: a process that ends meanwhile leaves the
    // one or the other. Where no new file can be made or put in the old one's place, because another process has it
    // open, say, the old one is written over instead. A store that the disk has no room for is not saved.
    void SaveLeData(std::string const& fileName);

    bool LeDataHasValue(std::string const& text);

    // How many entries went: 0 or 1.
    std::size_t EraseLeData(std::string const& key);

    // The key's entry from now on; none when either text is empty.
    void ReplaceLeData(std::string const& key, std::string const& value);

    // Empty when there is none.
    std::string GetLeData(std::string const& key);

    void ClearLeData();
} // namespace vorlink
