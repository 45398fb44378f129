// The store's file where it is not to be written, or in use by another process.
#include "tests/support/Patience.h"
#include "tests/support/ProcessEnd.h"
#include "tests/unit/HostileFiles.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <string>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::Pair;

namespace
{
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
} // namespace

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
