// Replacing a file's text: the old one or the new one, at every moment and whatever the system refuses.
#include "pairing/FileReplacement.h"
#include "tests/support/LogFile.h"
#include "tests/support/ReplacedImport.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

using namespace vorlink;
using testing::ElementsAre;

namespace
{
    constexpr char name[] = "file";

    std::string Text()
    {
        return test::ReadFile(name);
    }

    std::string NewName()
    {
        return std::string(name) + "." + std::to_string(GetCurrentProcessId()) + ".new";
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

    std::string oldText;
    std::string newText;

    BOOL WINAPI LookAndMove(char const* from, char const* to, DWORD flags)
    {
        oldText = test::ReadFile(to);
        newText = test::ReadFile(from);
        // Not by its name, which stands for this function here.
        auto const address = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "MoveFileExA");
        return reinterpret_cast<decltype(&MoveFileExA)>(reinterpret_cast<void*>(address))(from, to, flags);
    }

    BOOL WINAPI RefuseToMove(char const*, char const*, DWORD)
    {
        return FALSE;
    }

    std::size_t __cdecl WriteHalf(void const*, std::size_t, std::size_t count, std::FILE*)
    {
        return count / 2;
    }

    int __cdecl RefuseToCommit(int)
    {
        errno = EINVAL;
        return -1;
    }

    std::FILE* __cdecl MakeNoNewFile(char const* path, char const* mode)
    {
        if (std::string_view(path).ends_with(".new"))
        {
            errno = ENOSPC;
            return nullptr;
        }
        auto const address = GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), "fopen");
        return reinterpret_cast<decltype(&std::fopen)>(reinterpret_cast<void*>(address))(path, mode);
    }

    class FileReplacement : public testing::Test
    {
    protected:
        FileReplacement()
        {
            std::ofstream(name, std::ios::binary) << "the old text";
        }
    };
} // namespace

TEST_F(FileReplacement, LeavesTheTextAndNothingBeside)
{
    ReplaceFileText(name, "the\nnew\r\none\n");
    EXPECT_EQ(Text(), "the\nnew\r\none\n");
    EXPECT_THAT(Names(), ElementsAre(name));
    ReplaceFileText(name, "");
    EXPECT_EQ(Text(), "");
    ReplaceFileText("another", "text");
    EXPECT_EQ(test::ReadFile("another"), "text");
}

TEST_F(FileReplacement, HasTheWholeTextBeforeTheOldOneGoes)
{
    test::ReplaceImport(GetModuleHandleW(nullptr), "MoveFileExA", LookAndMove);
    ReplaceFileText(name, "new");
    EXPECT_EQ(oldText, "the old text");
    EXPECT_EQ(newText, "new");
    EXPECT_EQ(Text(), "new");
}

TEST_F(FileReplacement, WritesOverAFileThatIsHeldOpen)
{
    std::ifstream const reader(name, std::ios::binary);
    ReplaceFileText(name, "new");
    EXPECT_EQ(Text(), "new");
    EXPECT_THAT(Names(), ElementsAre(name));
}

TEST_F(FileReplacement, WritesOverWhereTheSystemRefusesTheExchange)
{
    test::ReplaceImport(GetModuleHandleW(nullptr), "MoveFileExA", RefuseToMove);
    ReplaceFileText(name, "new");
    EXPECT_EQ(Text(), "new");
    EXPECT_THAT(Names(), ElementsAre(name));
}

TEST_F(FileReplacement, WritesOverWhereNoNewFileCanBeMade)
{
    std::filesystem::create_directory(NewName());
    ReplaceFileText(name, "new");
    EXPECT_EQ(Text(), "new");
}

TEST_F(FileReplacement, TakesUpWhatAnEarlierProcessOfItsNumberHasLeft)
{
    std::ofstream(NewName(), std::ios::binary) << "left behind, and longer than the new text";
    ReplaceFileText(name, "new");
    EXPECT_EQ(Text(), "new");
    EXPECT_THAT(Names(), ElementsAre(name));
}

TEST_F(FileReplacement, KeepsTheOldTextWhereTheDiskHasNoRoom)
{
    test::ReplaceImport(GetModuleHandleW(nullptr), "fwrite", WriteHalf);
    ReplaceFileText(name, "new");
    EXPECT_EQ(Text(), "the old text");
    EXPECT_THAT(Names(), ElementsAre(name));
}

TEST_F(FileReplacement, KeepsTheOldTextWhereTheDiskHasNoRoomForANameEither)
{
    test::ReplaceImport(GetModuleHandleW(nullptr), "fopen", MakeNoNewFile);
    ReplaceFileText(name, "new");
    EXPECT_EQ(Text(), "the old text");
}

TEST_F(FileReplacement, DoesWithoutAFileSystemThatCommits)
{
    test::ReplaceImport(GetModuleHandleW(nullptr), "_commit", RefuseToCommit);
    ReplaceFileText(name, "new");
    EXPECT_EQ(Text(), "new");
    EXPECT_THAT(Names(), ElementsAre(name));
}

TEST_F(FileReplacement, OfAFolderChangesNothing)
{
    std::filesystem::create_directory("folder");
    ReplaceFileText("folder", "new");
    EXPECT_TRUE(std::filesystem::is_directory("folder"));
    EXPECT_EQ(Names().size(), 2u);
}
