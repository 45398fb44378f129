#include "pairing/LeStore.h"

#include "pairing/LeData.h"
#include "pairing/LibraryState.h"

#include <fstream>
#include <iostream>

namespace vorlink
{
    void LoadLeData(std::string const& fileName)
    {
        std::ifstream file(fileName, std::ios::binary);
        ReadLeData(file, Library().leDataMap, std::cout);
        std::cout.flush();
    }

    void SaveLeData(std::string const& fileName)
    {
        std::ofstream file(fileName, std::ios::binary); // single line feeds
        WriteLeData(Library().leDataMap, file, std::cout);
        std::cout.flush();
    }

    bool LeDataHasValue(std::string const& text)
    {
        return HasValue(Library().leDataMap, text);
    }

    std::size_t EraseLeData(std::string const& key)
    {
        return Library().leDataMap.erase(key);
    }

    std::string GetLeData(std::string const& key)
    {
        return ValueOf(Library().leDataMap, key);
    }
} // namespace vorlink
