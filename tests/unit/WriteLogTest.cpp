// The log's file: when it is touched, and what is appended.
#include "log/WriteLog.h"
#include "tests/support/LogFile.h"
#include "tests/support/Patience.h"
#include "tests/support/ReplacedImport.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <future>

using namespace test;
using testing::ElementsAre;
using vorlink::WriteLog;

namespace
{
    constexpr char path[] = R"(C:\source\SubVorlink)";

    std::promise<void> firstAsks;
    std::promise<void> firstMayGoOn;
    std::atomic<int> asked = 0;

    // Every record asks for the directory: the first one that does is held there.
    char* HoldTheFirst(char* buffer, int size)
    {
        if (++asked == 1)
        {
            firstAsks.set_value();
            firstMayGoOn.get_future().wait();
        }
        return GetCurrentDirectoryA(static_cast<DWORD>(size), buffer) ? buffer : nullptr;
    }

    char* FindNoDirectory(char* buffer, int)
    {
        buffer[0] = 'x'; // of no use to anyone
        return nullptr;
    }

    void* NoMemoryForARecord(std::size_t count, std::size_t size)
    {
        return count * size < vorlink::recordCapacity ? std::memset(std::malloc(count * size), 0, count * size)
                                                      : nullptr;
    }
} // namespace

TEST(WriteLog, SwitchedOffTouchesNoFile)
{
    WriteLog(false, path, 1, "f", "message");
    EXPECT_FALSE(LogExists());
}

TEST(WriteLog, SwitchedOffLeavesAnExistingFileAsItIs)
{
    std::ofstream("log.log", std::ios::binary) << "before";
    WriteLog(false, path, 1, "f", "message");
    EXPECT_EQ(ReadFile("log.log"), "before");
}

TEST(WriteLog, FirstRecordCreatesTheFileWithExactlyOneLine)
{
    WriteLog(true, path, 488, "ReadLine", "Readline entry");
    EXPECT_THAT(Log(), ElementsAre(Record(488, "ReadLine", "Readline entry")));
}

TEST(WriteLog, RecordsAreAppended)
{
    std::ofstream("log.log", std::ios::binary) << "before\n";
    WriteLog(true, path, 1, "f", "%d %s", 7, "seven");
    std::string const text = ReadFile("log.log");
    EXPECT_TRUE(text.starts_with("before\n"));
    EXPECT_TRUE(text.ends_with("[File:SubVorlink][Line:1][Function:f] 7 seven\n"));
}

TEST(WriteLog, LinesEndInASingleLineFeed)
{
    WriteLog(true, path, 1, "f", "message");
    EXPECT_EQ(ReadFile("log.log").find('\r'), std::string::npos);
}

TEST(WriteLog, MessageThatEndsInALineFeedLeavesAnEmptyLine)
{
    WriteLog(true, path, 818, "f", "%llu     paired success\n", 5ull);
    WriteLog(true, path, 825, "f", "next");
    EXPECT_THAT(Log(), ElementsAre(Record(818, "f", "5     paired success\n"), Record(825, "f", "next")));
}

TEST(WriteLog, LongRecordIsCutAndWrittenWhole)
{
    std::string const message(50'000, 'm');
    WriteLog(true, path, 1, "f", "%s", message.c_str());
    WriteLog(true, path, 2, "f", "next");
    auto const records = Log();
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(std::filesystem::file_size("log.log"), vorlink::recordCapacity + 23 + records[1].size());
}

TEST(WriteLog, FileThatCannotBeOpenedDropsTheRecord)
{
    std::filesystem::create_directory("log.log");
    WriteLog(true, path, 1, "f", "message");
    EXPECT_TRUE(std::filesystem::is_directory("log.log"));
}

TEST(WriteLog, FollowsTheCurrentDirectory)
{
    std::filesystem::create_directory("other");
    WriteLog(true, path, 1, "f", "here");
    std::filesystem::current_path("other");
    WriteLog(true, path, 2, "f", "there");
    EXPECT_THAT(Log(), ElementsAre(Record(2, "f", "there")));
    std::filesystem::current_path("..");
    EXPECT_THAT(Log(), ElementsAre(Record(1, "f", "here")));
}

TEST(WriteLog, DirectoryWhoseNameCannotBeHadIsTheCurrentOneAllTheSame)
{
    test::ReplaceImport(GetModuleHandleW(nullptr), "_getcwd", FindNoDirectory);
    WriteLog(true, path, 1, "f", "message");
    EXPECT_THAT(Log(), ElementsAre(Record(1, "f", "message")));
}

TEST(WriteLog, RecordWithoutMemoryIsLost)
{
    test::ReplaceImport(GetModuleHandleW(nullptr), "calloc", NoMemoryForARecord);
    WriteLog(true, path, 1, "f", "message");
    EXPECT_FALSE(LogExists());
}

TEST(WriteLog, HeldUpOnOneThreadHoldsUpNoOther)
{
    ReplaceImport(GetModuleHandleW(nullptr), "_getcwd", HoldTheFirst);
    auto const held = std::async(std::launch::async, [] { WriteLog(true, path, 1, "f", "held up"); });
    ASSERT_TRUE(IsReady(firstAsks.get_future(), patience));
    auto const other = std::async(std::launch::async, [] { WriteLog(true, path, 2, "f", "passes"); });
    EXPECT_TRUE(IsReady(other, patience));
    EXPECT_THAT(Log(), ElementsAre(Record(2, "f", "passes")));
    firstMayGoOn.set_value();
    held.wait();
    EXPECT_THAT(Log(), ElementsAre(Record(2, "f", "passes"), Record(1, "f", "held up")));
}
