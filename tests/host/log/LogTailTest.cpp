#include "host/log/LogTail.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

using namespace host;

namespace
{
    constexpr char path[] = "tail.log";

    void Write(std::string const& text, std::ios::openmode mode = std::ios::trunc)
    {
        std::ofstream(path, std::ios::binary | mode) << text;
    }

    void Append(std::string const& text)
    {
        Write(text, std::ios::app);
    }

    std::string Text(LogTail& tail)
    {
        auto const news = tail.Read();
        return (news.anew ? "anew:" : "") + news.text;
    }
} // namespace

TEST(LogTail, ReadsWhatIsNew)
{
    LogTail tail(path);
    EXPECT_EQ(Text(tail), "") << "not there yet";
    Write("one\n");
    EXPECT_EQ(Text(tail), "one\n");
    EXPECT_EQ(Text(tail), "");
    Append("tw");
    EXPECT_EQ(Text(tail), "tw");
    Append("o\n");
    EXPECT_EQ(Text(tail), "o\n");
}

TEST(LogTail, BeginsAnewWithAFileThatIsCutOrAnother)
{
    LogTail tail(path);
    Write("one\ntwo\n");
    EXPECT_EQ(Text(tail), "one\ntwo\n");
    Write("1\n");
    EXPECT_EQ(Text(tail), "anew:1\n") << "shorter";
    Write("another and longer\n");
    EXPECT_EQ(Text(tail), "anew:another and longer\n");
    Write("");
    EXPECT_EQ(Text(tail), "anew:");
    Append("more\n");
    EXPECT_EQ(Text(tail), "more\n");
}

TEST(LogTail, ComparesAFileThatComesBack)
{
    LogTail tail(path);
    Write("one\n");
    EXPECT_EQ(Text(tail), "one\n");
    std::filesystem::rename(path, "old.log");
    EXPECT_EQ(Text(tail), "");
    Write("two and more\n");
    EXPECT_EQ(Text(tail), "anew:two and more\n");
}

TEST(LogTail, TakesNoFolderForAFile)
{
    std::filesystem::create_directory("folder");
    LogTail tail("folder");
    EXPECT_EQ(Text(tail), "");
}

TEST(LogTail, ReadsBeyondTheHeadThatItCompares)
{
    LogTail tail(path);
    Write(std::string(3000, 'x') + "\n");
    EXPECT_EQ(Text(tail).size(), 3001u);
    Append("new\n");
    EXPECT_EQ(Text(tail), "new\n");
}
