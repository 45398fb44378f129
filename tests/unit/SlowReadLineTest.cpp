// The lookup of a new device's address piece, run whole on the test's thread: what it leaves in the store, the file,
// the log and on standard output.
#include "pairing/LibraryState.h"
#include "pairing/ReadLine.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/Listing.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::StartsWith;

namespace
{
    constexpr char otherInstance[] = R"(Instance ID:                BTHLE\Dev_cc50e318f69d\8&1a2b3c4d&0&CC50E318F69D)";
    constexpr char otherPiece[] = "CC50E318F69D";
    char const* const lines[] = {"Readline entry", "file exist"};

    std::string const tool = "[listing]\nunrelated-devices = 2\n";

    std::string Listed(std::string const& address, std::string const& more = "")
    {
        return Device("", address, "protocols = ['le']\nlisted = true\n" + more);
    }

    LeData& Store()
    {
        return Library().leDataMap;
    }

    // Runs the lookup and returns what it wrote to standard output. On a machine under load the tool may come
    // too late for the library's fixed wait, which then learns nothing: such a run is repeated.
    std::string Look(std::string const& name, bool inTime = true)
    {
        Library().logEnabled = true;
        std::string output;
        for (int attempt = 0; attempt < 4; ++attempt)
        {
            std::filesystem::remove("log.log");
            auto const store = Store();
            bool result = false;
            output = OutputOf([&] { result = ReadLine(name); });
            EXPECT_TRUE(result);
            if (!inTime || output.find("Utility") != std::string::npos)
            {
                break;
            }
            EXPECT_EQ(Store(), store) << "nothing was read";
        }
        return output;
    }

    std::vector<std::string> RecordsOfLearning(std::string const& instance, std::string const& piece)
    {
        return {Record(488, reader, "Readline entry"), Record(503, reader, "file exist"),
                Record(514, reader, "find instance ID  is: " + instance),
                Record(524, reader, "find instance vectors[2]  is: " + piece),
                Record(527, reader, "add new succes  " + piece)};
    }
} // namespace

TEST(SlowReadLine, LearnsTheNewPieceUnderTheName)
{
    LoadWithTool(tool + Listed(tagAddress));
    auto const output = Look("Tag");
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", tagPiece)));
    EXPECT_EQ(ReadFile("MyLEData"), "Tag=C1D2E3F4A5B6\n");
    EXPECT_EQ(Log(), RecordsOfLearning(tagInstance, tagPiece));
    EXPECT_THAT(output, StartsWith("Microsoft PnP Utility\r\n\r\nInstance ID:                USB"));
    EXPECT_THAT(output, HasSubstr(std::string("\r\n") + tagInstance +
                                  "\r\n\r\nDevice Description:         ?? LE ??\r\n"
                                  "Class Name:                 Bluetooth\r\nDevice Description:         ?? LE ??\r\n"));
    EXPECT_THAT(output, EndsWith("\r\nTag:C1D2E3F4A5B6\r\n")) << "the saved store";
    EXPECT_FALSE(std::filesystem::exists("ble.jpg"));
}

TEST(SlowReadLine, TheLatestOfTwoNewPiecesStays)
{
    LoadWithTool(tool + Listed(tagAddress) + Listed("cc:50:e3:18:f6:9d"));
    Look("Tag");
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", otherPiece)));
    EXPECT_EQ(ReadFile("MyLEData"), "Tag=CC50E318F69D\n");
    auto records = RecordsOfLearning(tagInstance, tagPiece);
    auto const others = RecordsOfLearning(otherInstance, otherPiece);
    records.insert(records.end(), others.begin() + std::size(lines), others.end());
    EXPECT_EQ(Log(), records);
}

TEST(SlowReadLine, KnownPieceChangesNothingAndTheStoreIsSavedAllTheSame)
{
    LoadWithTool(tool + Listed(tagAddress));
    Store() = {{"Other", "x C1D2E3F4A5B6 x"}, {"Tag", "old"}};
    Look("Tag");
    EXPECT_THAT(Store(), ElementsAre(Pair("Other", "x C1D2E3F4A5B6 x"), Pair("Tag", "old")));
    EXPECT_EQ(ReadFile("MyLEData"), "Other=x C1D2E3F4A5B6 x\nTag=old\n");
    auto records = RecordsOfLearning(tagInstance, tagPiece);
    records.pop_back();
    EXPECT_EQ(Log(), records);
}

TEST(SlowReadLine, NewPieceReplacesTheNamesOldOne)
{
    LoadWithTool(tool + Listed(tagAddress));
    Store() = {{"Tag", "old"}, {"Other", "kept"}};
    Look("Tag");
    EXPECT_THAT(Store(), ElementsAre(Pair("Other", "kept"), Pair("Tag", tagPiece)));
}

TEST(SlowReadLine, EmptyNameLearnsNothing)
{
    LoadWithTool(tool + Listed(tagAddress));
    Look("");
    EXPECT_THAT(Store(), IsEmpty());
    EXPECT_EQ(Log(), RecordsOfLearning(tagInstance, tagPiece));
    EXPECT_EQ(ReadFile("MyLEData"), "");
}

TEST(SlowReadLine, AnotherDescriptionOrTooFewPiecesTeachNothing)
{
    LoadWithTool(tool + Listed(tagAddress, "description = 'Bluetooth LE device'") +
                 Listed("cc:50:e3:18:f6:9d",
                        "[device.le]\nproperties.'System.Devices.DeviceInstanceId' = 'BTHLE\\Dev_x\\8&1a&0'"));
    Look("Tag");
    EXPECT_THAT(Store(), IsEmpty());
    EXPECT_THAT(Log(), ElementsAre(Record(488, reader, "Readline entry"), Record(503, reader, "file exist"),
                                   Record(514, reader, std::string("find instance ID  is: ") + tagInstance),
                                   Record(514, reader,
                                          "find instance ID  is: Instance ID:                BTHLE\\Dev_x\\8&1a&0")));
}

TEST(SlowReadLine, LabelsInAnotherLanguageDoNotMatter)
{
    LoadWithTool(tool + "language = 'German'\n" + Listed(tagAddress));
    Library().logEnabled = false;
    for (int attempt = 0; attempt < 4 && Store().empty(); ++attempt)
    {
        OutputOf([] { ReadLine("Tag"); });
    }
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", tagPiece)));
    EXPECT_FALSE(LogExists()) << "the log is off";
}

TEST(SlowReadLine, EmptyListingSavesTheStoreUnchanged)
{
    LoadWithTool("[listing]\nmissing = true\n" + Listed(tagAddress));
    Store() = {{"AA", "BB"}};
    EXPECT_EQ(Look("Tag", false), "AA:BB\r\n");
    EXPECT_EQ(ReadFile("MyLEData"), "AA=BB\n");
    EXPECT_THAT(Log(), ElementsAre(Record(488, reader, "Readline entry"), Record(503, reader, "file exist")));
    EXPECT_FALSE(std::filesystem::exists("ble.jpg"));
}

TEST(SlowReadLine, WithoutAListingNothingIsSaved)
{
    LoadWithTool(tool + Listed(tagAddress));
    std::filesystem::create_directory("ble.jpg"); // the redirection fails
    Store() = {{"AA", "BB"}};
    EXPECT_EQ(Look("Tag", false), "");
    EXPECT_FALSE(std::filesystem::exists("MyLEData"));
    EXPECT_THAT(Log(), ElementsAre(Record(488, reader, "Readline entry")));
}

TEST(SlowReadLine, ListingThatComesTooLateIsNotWaitedFor)
{
    LoadWithTool(tool + "duration-ms = 1500\n" + Listed(tagAddress));
    auto const start = GetTickCount64();
    EXPECT_EQ(Look("Tag", false), "");
    auto const took = GetTickCount64() - start;
    EXPECT_GE(took, 3700u - 50u) << "the clock ticks in steps";
    EXPECT_THAT(Store(), IsEmpty());
    EXPECT_EQ(ReadFile("MyLEData"), "");
    EXPECT_THAT(Log(), ElementsAre(Record(488, reader, "Readline entry"), Record(503, reader, "file exist")));
}

TEST(SlowReadLine, OldListingIsOverwritten)
{
    std::ofstream("ble.jpg", std::ios::binary) << otherInstance << "\n?? LE ??\n" << std::string(100'000, 'x') << "\n";
    LoadWithTool(tool + Listed(tagAddress));
    auto const output = Look("Tag");
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", tagPiece)));
    EXPECT_THAT(output, Not(HasSubstr(otherPiece)));
}
