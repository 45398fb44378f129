#include "pairing/LeStore.h"

#include "pairing/FileReplacement.h"
#include "pairing/LeData.h"
#include "pairing/LibraryState.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <mutex>
#include <string>

namespace vorlink
{
    void LoadLeData(std::string const& fileName)
    {
        std::string echo; // printed when no lock is held: whoever reads standard output may take his time
        {
            std::lock_guard const file(Library().leFileMutex); // to the end: a save meanwhile would lack what was read
            std::ifstream text;
            TryForAMoment([&] {
                text.open(fileName, std::ios::binary);
                return text.is_open() || errno != EACCES; // refused while another process puts a new file in its place
            });
            LeData read;
            ReadLeData(text, read, echo);
            std::lock_guard const lock(Library().leDataMutex);
            auto& store = Library().leDataMap;
            if (store.empty()) // the first load, as a rule: no entry need be looked for
            {
                store.swap(read);
            }
            store.merge(read);
        }
        std::cout << echo << std::flush;
    }

    void SaveLeData(std::string const& fileName)
    {
        std::string echo;
        {
            std::lock_guard const file(Library().leFileMutex);
            std::string text;
            {
                std::lock_guard const lock(Library().leDataMutex);
                WriteLeData(Library().leDataMap, text, echo);
            }
            ReplaceFileText(fileName, text);
        }
        std::cout << echo << std::flush;
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
        if (key.empty() || value.empty())
        {
            Library().leDataMap.erase(key);
            return;
        }
        Library().leDataMap.insert_or_assign(key, value);
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
