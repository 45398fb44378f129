#include "pairing/LeStore.h"

#include "pairing/FileReplacement.h"
#include "pairing/LeData.h"
#include "pairing/LibraryState.h"

#include <fstream>
#include <iostream>
#include <mutex>
#include <sstream>

namespace vorlink
{
    void LoadLeData(std::string const& fileName)
    {
        LeData read;
        {
            std::lock_guard const file(Library().leFileMutex);
            std::ifstream text(fileName, std::ios::binary);
            ReadLeData(text, read, std::cout);
        }
        std::cout.flush();
        std::lock_guard const lock(Library().leDataMutex);
        Library().leDataMap.merge(read);
    }

    void SaveLeData(std::string const& fileName)
    {
        std::lock_guard const file(Library().leFileMutex);
        LeData const store = [] {
            std::lock_guard const lock(Library().leDataMutex);
            return Library().leDataMap;
        }();
        std::ostringstream text;
        WriteLeData(store, text, std::cout);
        std::cout.flush();
        ReplaceFileText(fileName, text.str());
    }

    bool LeDataHasValue(std::string const& text)
    {
        std::lock_guard const lock(Library().leDataMutex);
        return HasValue(Library().leDataMap, text);
    }

    std::size_t EraseLeData(std::string const& key)
    {
        std::lock_guard const lock(Library().leDataMutex);
        return Library().leDataMap.erase(key);
    }

    void ReplaceLeData(std::string const& key, std::string const& value)
    {
        std::lock_guard const lock(Library().leDataMutex);
        Library().leDataMap.erase(key);
        if (!key.empty() && !value.empty())
        {
            Library().leDataMap.emplace(key, value);
        }
    }

    std::string GetLeData(std::string const& key)
    {
        std::lock_guard const lock(Library().leDataMutex);
        return ValueOf(Library().leDataMap, key);
    }

    void ClearLeData()
    {
        std::lock_guard const lock(Library().leDataMutex);
        Library().leDataMap.clear();
    }
} // namespace vorlink
