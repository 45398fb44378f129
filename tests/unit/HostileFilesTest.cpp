// The store's file and the listing as anybody may leave them: odd, huge, not to be written, or in use elsewhere.
#include "pairing/LeStore.h"
#include "pairing/LibraryState.h"
#include "pairing/ReadLine.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/Patience.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/ReplacedImport.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

using namespace test;
using namespace vorlink;
using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace
{
    constexpr std::size_t huge = 50'000'000;
    constexpr int many = 100'000;

    struct HostileStore
    {
        char const* label;
        std::string (*text)();
        LeData (*entries)();
    };

    struct HostileListing
    {
        char const* label;
        std::string (*text)();
        std::string (*piece)(); // that is learnt; none when it is empty
    };

    std::string Number(int index)
    {
        return std::to_string(1'000'000 + index); // of one length: none is a part of another
    }

    std::string Repeated(std::string_view before, char byte, std::string_view behind = "")
    {
        return std::string(before) + std::string(huge, byte) + std::string(behind);
    }

    std::string ManyEntries()
    {
        std::string text;
        for (int index = 0; index < many; ++index)
        {
            text += "Device " + Number(index) + "=Piece " + Number(index) + "\n";
        }
        return text;
    }

    LeData ManyEntriesRead()
    {
        LeData entries;
        for (int index = 0; index < many; ++index)
        {
            entries["Device " + Number(index)] = "Piece " + Number(index);
        }
        return entries;
    }

    std::string ManyDevices()
    {
        std::string text;
        for (int index = 0; index < many; ++index)
        {
            text += "BTHLE\\Dev_a&b&c&" + Number(index) + "\r\n?? LE ??\r\n\r\n";
        }
        return text;
    }

    std::string Nothing()
    {
        return {};
    }

    LeData NoEntries()
    {
        return {};
    }

    constexpr HostileStore stores[] = {
        {"Empty", Nothing, NoEntries},
        {"WithoutALineEnd", [] { return std::string("AA=BB\nCC=DD"); },
         [] {
             return LeData{{"AA", "BB"}, {"CC", "DD"}};
         }},
        {"OneHugeLine", [] { return Repeated("", 'x'); }, NoEntries},
        {"OneHugeKey", [] { return Repeated("", 'x', "=B"); },
         [] {
             return LeData{{Repeated("", 'x'), "B"}};
         }},
        {"OneHugeValue", [] { return Repeated("A=", 'x'); },
         [] {
             return LeData{{"A", Repeated("", 'x')}};
         }},
        {"EqualsSignsAlone", [] { return Repeated("", '='); }, NoEntries},
        {"LineFeedsAlone", [] { return Repeated("", '\n', "AA=BB"); },
         [] {
             return LeData{{"AA", "BB"}};
         }},
        {"ZeroBytes", [] { return std::string("A\0A=B\0B\n\0\n\0=\0\nCC=DD"sv); },
         [] {
             return LeData{{std::string("A\0A"sv), std::string("B\0B"sv)},
                           {std::string("\0"sv), std::string("\0"sv)},
                           {"CC", "DD"}};
         }},
        {"Utf16",
         [] {
             return std::string("\xff\xfe"
                                "A\0=\0B\0\n\0"sv);
         },
         [] {
             return LeData{{std::string("\xff\xfe"
                                        "A\0"sv),
                            std::string("\0B\0"sv)}};
         }},
        {"ManyEntries", ManyEntries, ManyEntriesRead},
    };

    constexpr HostileListing listings[] = {
        {"Empty", Nothing, Nothing},
        {"WithoutALineEnd", [] { return std::string("BTHLE\\Dev_a&b&c&C1\n?? LE ??"); },
         [] { return std::string("C1"); }},
        {"EndingBehindTheIdentifier", [] { return std::string("BTHLE\\Dev_a&b&c&C1"); }, Nothing},
        {"OneHugeLine", [] { return Repeated("", 'x'); }, Nothing},
        {"OneHugeIdentifier", [] { return Repeated("BTHLE\\Dev_a&b&c&", 'C', "\n?? LE ??\n"); },
         [] { return Repeated("", 'C'); }},
        {"OneHugeDescription", [] { return Repeated("BTHLE\\Dev_a&b&c&C1\n", 'x', "?? LE ??\n"); },
         [] { return std::string("C1"); }},
        {"ManyPieces", [] { return "BTHLE\\Dev_a&b&c&C1" + std::string(many, '&') + "\n?? LE ??\n"; },
         [] { return std::string("C1"); }},
        {"ZeroBytes",
         [] {
             return std::string("\0\nBTHLE\\Dev_a\0&b&c&C\0"
                                "1\n\0?? LE ??\0\n"sv);
         },
         [] {
             return std::string("C\0"
                                "1"sv);
         }},
        {"ManyDevices", ManyDevices, [] { return Number(many - 1); }},
    };

    LeData& Store()
    {
        return Library().leDataMap;
    }

    void WriteFile(char const* name, std::string const& bytes)
    {
        std::ofstream(name, std::ios::binary) << bytes;
    }

    void Load()
    {
        SilentOutput const silent;
        LoadLeData(leDataFile);
    }

    void Save()
    {
        SilentOutput const silent;
        SaveLeData(leDataFile);
    }

    constexpr char listingFile[] = "ble.jpg";
    std::string listing;

    UINT WINAPI WriteListing(char const*, UINT)
    {
        WriteFile(listingFile, listing);
        return 33;
    }

    void WINAPI SleepNot(DWORD) {}

    UINT WINAPI RunNothing(char const*, UINT)
    {
        return ERROR_FILE_NOT_FOUND;
    }

    constexpr char oneDevice[] = "BTHLE\\Dev_a&b&c&C1\n?? LE ??\n";

    // Looks "Tag" up without the waits.
    void Look(decltype(WinExec)* tool)
    {
        auto* const self = GetModuleHandleW(nullptr);
        ReplaceImport(self, "Sleep", SleepNot);
        ReplaceImport(self, "WinExec", tool);
        SilentOutput const silent;
        EXPECT_TRUE(ReadLine("Tag"));
    }

    void LookAt(std::string text)
    {
        listing = std::move(text);
        Look(WriteListing);
    }

    std::vector<std::string> Names()
    {
        std::vector<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator("."))
        {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    void MakeReadOnly(char const* name)
    {
        ASSERT_TRUE(SetFileAttributesA(name, FILE_ATTRIBUTE_READONLY));
    }

    BOOL WINAPI RefuseToMove(char const*, char const*, DWORD)
    {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }

    bool diskIsFull = true;

    std::size_t __cdecl WriteIfThereIsRoom(void const* bytes, std::size_t size, std::size_t count, std::FILE* file)
    {
        if (diskIsFull)
        {
            return 0;
        }
        auto const address = GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), "fwrite");
        return reinterpret_cast<decltype(&std::fwrite)>(reinterpret_cast<void*>(address))(bytes, size, count, file);
    }

    // Set in the process that saves beside the test, and runs this same test.
    constexpr wchar_t otherVariable[] = L"VORLINK_TEST_OTHER";
    constexpr char stopFile[] = "stop";

    LeData StoreOf(std::string const& owner, int entries)
    {
        LeData store;
        for (int index = 0; index < entries; ++index)
        {
            store[owner + Number(index)] = "Piece " + Number(index);
        }
        return store;
    }

    HANDLE StartOther()
    {
        SetEnvironmentVariableW(otherVariable, L"1");
        std::wstring program(MAX_PATH, L'\0');
        program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
        std::wstring arguments = L"other --gtest_brief=1 --gtest_filter=HostileFiles.OfTwoProcesses*";
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION other{};
        EXPECT_TRUE(CreateProcessW(program.c_str(), arguments.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                   &startup, &other));
        CloseHandle(other.hThread);
        return other.hProcess;
    }

    constexpr auto label = [](auto const& test) { return std::string(test.param.label); };

    void PrintTo(HostileStore const& file, std::ostream* stream)
    {
        *stream << file.label;
    }

    void PrintTo(HostileListing const& file, std::ostream* stream)
    {
        *stream << file.label;
    }

    using HostileStoreFile = testing::TestWithParam<HostileStore>;
    using HostileListingFile = testing::TestWithParam<HostileListing>;
} // namespace

TEST_P(HostileStoreFile, GivesItsEntriesAndKeepsThem)
{
    WriteFile(leDataFile, GetParam().text());
    auto const entries = GetParam().entries();
    Load();
    EXPECT_TRUE(Store() == entries) << Store().size() << " entries";
    Save();
    ClearLeData();
    Load();
    EXPECT_TRUE(Store() == entries) << Store().size() << " entries";
    EXPECT_THAT(Names(), ElementsAre(leDataFile));
}

INSTANTIATE_TEST_SUITE_P(HostileFiles, HostileStoreFile, testing::ValuesIn(stores), label);

TEST_P(HostileListingFile, TeachesItsLastPiece)
{
    LookAt(GetParam().text());
    auto const piece = GetParam().piece();
    auto const expected = piece.empty() ? LeData() : LeData{{"Tag", piece}};
    EXPECT_TRUE(Store() == expected) << GetLeData("Tag").substr(0, 40);
    EXPECT_TRUE(ReadFile(leDataFile) == (piece.empty() ? "" : "Tag=" + piece + "\n"));
    EXPECT_THAT(Names(), ElementsAre(leDataFile));
}

INSTANTIATE_TEST_SUITE_P(HostileFiles, HostileListingFile, testing::ValuesIn(listings), label);

TEST(HostileFiles, FolderInTheListingsPlaceTeachesNothing)
{
    std::filesystem::create_directory(listingFile);
    Store() = {{"AA", "BB"}};
    Look(RunNothing);
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "BB")));
    EXPECT_THAT(Names(), ElementsAre(listingFile)) << "nothing is saved either";
}

TEST(HostileFiles, FolderInTheStoresPlaceLeavesWhatIsLearntInMemory)
{
    std::filesystem::create_directory(leDataFile);
    LookAt(oneDevice);
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", "C1")));
    EXPECT_TRUE(std::filesystem::is_directory(leDataFile));
    EXPECT_THAT(Names(), ElementsAre(leDataFile));
}

TEST(HostileFiles, ReadOnlyStoreIsReadAndKeptWhereTheSystemRefusesTheExchange)
{
    WriteFile(leDataFile, "AA=BB\n");
    MakeReadOnly(leDataFile);
    bool const isKept = !std::ofstream(leDataFile, std::ios::app); // Wine run by root writes all the same
    Load();
    ReplaceImport(GetModuleHandleW(nullptr), "MoveFileExA", RefuseToMove); // and moves, whoever runs it
    LookAt(oneDevice);
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "BB"), Pair("Tag", "C1")));
    EXPECT_EQ(ReadFile(leDataFile), isKept ? "AA=BB\n" : "AA=BB\nTag=C1\n");
    EXPECT_THAT(Names(), ElementsAre(leDataFile));
}

TEST(HostileFiles, ReadOnlyListingIsReadAndLeft)
{
    WriteFile(listingFile, oneDevice);
    MakeReadOnly(listingFile);
    Look(RunNothing);
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", "C1")));
    EXPECT_THAT(Names(), UnorderedElementsAre(leDataFile, listingFile));
}

TEST(HostileFiles, FullDiskKeepsTheOldStoreUntilThereIsRoom)
{
    WriteFile(leDataFile, "AA=BB\n");
    Load();
    ReplaceImport(GetModuleHandleW(nullptr), "fwrite", WriteIfThereIsRoom);
    LookAt(oneDevice);
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "BB"), Pair("Tag", "C1")));
    EXPECT_EQ(ReadFile(leDataFile), "AA=BB\n");
    EXPECT_THAT(Names(), ElementsAre(leDataFile));
    diskIsFull = false;
    Save();
    EXPECT_EQ(ReadFile(leDataFile), "AA=BB\nTag=C1\n");
}

TEST(HostileFiles, OfTwoProcessesThatSaveAndLoadIsReadWhole)
{
    std::filesystem::current_path(DirectoryOfTheTest());
    auto const own = StoreOf("Own ", 3'000);
    auto const others = StoreOf("Another's ", 2'000);
    if (GetEnvironmentVariableW(otherVariable, nullptr, 0) != 0)
    {
        Store() = others;
        WaitUntil([] {
            Save();
            return std::filesystem::exists(stopFile);
        });
        return;
    }
    HANDLE const other = StartOther();
    ASSERT_TRUE(WaitUntil([] { return std::filesystem::exists(leDataFile); }));
    int ownRead = 0;
    int othersRead = 0;
    int torn = 0;
    for (int round = 0; round < 200; ++round)
    {
        ClearLeData();
        Load();
        ++(Store() == own ? ownRead : Store() == others ? othersRead : torn);
        Store() = own;
        Save();
    }
    WriteFile(stopFile, "");
    EXPECT_EQ(WaitForSingleObject(other, 20'000), WAIT_OBJECT_0);
    CloseHandle(other);
    EXPECT_EQ(torn, 0);
    EXPECT_GT(ownRead, 0);
    EXPECT_GT(othersRead, 0);
}
