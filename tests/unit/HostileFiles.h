// The store's file and the listing, put where the library looks for them, and the library looking.
#pragma once

#include "pairing/LeStore.h"
#include "pairing/LibraryState.h"
#include "pairing/ReadLine.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/ReplacedImport.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test
{
    using vorlink::LeData;
    using vorlink::leDataFile;

    inline constexpr std::size_t huge = 50'000'000;
    inline constexpr int many = 100'000;

    inline std::string Number(int index)
    {
        return std::to_string(1'000'000 + index); // of one length: none is a part of another
    }

    inline std::string Repeated(std::string_view before, char byte, std::string_view behind = "")
    {
        return std::string(before) + std::string(huge, byte) + std::string(behind);
    }

    inline std::string Nothing()
    {
        return {};
    }

    inline LeData& Store()
    {
        return vorlink::Library().leDataMap;
    }

    inline void WriteFile(char const* name, std::string const& bytes)
    {
        std::ofstream(name, std::ios::binary) << bytes;
    }

    inline void Load()
    {
        SilentOutput const silent;
        vorlink::LoadLeData(leDataFile);
    }

    inline void Save()
    {
        SilentOutput const silent;
        vorlink::SaveLeData(leDataFile);
    }

    inline constexpr char listingFile[] = "ble.jpg";
    inline std::string listing;

    inline UINT WINAPI WriteListing(char const*, UINT)
    {
        WriteFile(listingFile, listing);
        return 33;
    }

    inline void WINAPI SleepNot(DWORD) {}

    inline UINT WINAPI RunNothing(char const*, UINT)
    {
        return ERROR_FILE_NOT_FOUND;
    }

    inline constexpr char oneDevice[] = "BTHLE\\Dev_a&b&c&C1\n?? LE ??\n";

    // Looks "Tag" up without the waits.
    inline void Look(decltype(WinExec)* tool)
    {
        auto* const self = GetModuleHandleW(nullptr);
        ReplaceImport(self, "Sleep", SleepNot);
        ReplaceImport(self, "WinExec", tool);
        SilentOutput const silent;
        EXPECT_TRUE(vorlink::ReadLine("Tag"));
    }

    inline void LookAt(std::string text)
    {
        listing = std::move(text);
        Look(WriteListing);
    }

    inline std::vector<std::string> Names()
    {
        std::vector<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator("."))
        {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    inline void MakeReadOnly(char const* name)
    {
        ASSERT_TRUE(SetFileAttributesA(name, FILE_ATTRIBUTE_READONLY));
    }

    inline constexpr auto labelOfFile = [](auto const& test) { return std::string(test.param.label); };
} // namespace test
