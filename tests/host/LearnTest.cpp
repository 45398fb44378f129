// vorlinkctl waits, after a pairing, for what the library learns of the device, so that unpair knows it.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"
#include "tests/support/LogFile.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <string>

using namespace test;
using testing::HasSubstr;
using testing::Not;

namespace
{
    constexpr char store[] = "MyLEData";

    constexpr char tag[] = R"(
[[device]]
name = "Tag"
address = "c1:d2:e3:f4:a5:b6"
protocols = ["classic", "le"]
[device.le]
is-paired = true
)";

    // Under load the listing may come too late for the library, which then learns nothing: the pairing is repeated.
    ChildResult RunUntilLearnt(Arguments const& arguments)
    {
        ChildResult result{};
        for (int attempt = 0; attempt < 4 && ReadFile(store).empty(); ++attempt)
        {
            result = RunVorlinkctl(arguments);
            EXPECT_EQ(result.exitCode, 0u);
        }
        return result;
    }
} // namespace

TEST(SlowLearn, LeavesTheEntryAndNoListing)
{
    UseScenario(tag);
    auto const result = RunUntilLearnt({"pair", "Tag"});
    EXPECT_EQ(ReadFile(store), "Tag=C1D2E3F4A5B6\n");
    EXPECT_FALSE(std::filesystem::exists("ble.jpg"));
    EXPECT_EQ(result.output, "Paired \"Tag\" (c1:d2:e3:f4:a5:b6).\nLearnt: the LE side of \"Tag\" is C1D2E3F4A5B6.\n")
        << "without the listing's echo";
}

TEST(SlowLearn, OfAPhoneIsInTheUsersFolderToo)
{
    UseScenario(tag);
    auto const result = RunUntilLearnt({"pair-phone", "Tag"});
    EXPECT_EQ(ReadFile(store), "Tag=C1D2E3F4A5B6\n");
    EXPECT_FALSE(std::filesystem::exists("ble.jpg"));
    EXPECT_THAT(result.output, HasSubstr("Learnt: the LE side of \"Tag\" is C1D2E3F4A5B6.\n"));
}

TEST(SlowLearn, KeepsWhatElseTheDataFileHolds)
{
    UseScenario(tag);
    std::ofstream(store, std::ios::binary) << "Tag=old\nOther=A1\nno entry\n";
    for (int attempt = 0; attempt < 4 && ReadFile(store).find("Tag=C1D2E3F4A5B6") == std::string::npos; ++attempt)
    {
        RunVorlinkctl({"pair", "Tag"});
    }
    EXPECT_EQ(ReadFile(store), "Other=A1\nno entry\nTag=C1D2E3F4A5B6\n");
}

TEST(SlowLearn, OfAnotherDevicesLeSideIsAWarning)
{
    UseScenario(std::string(tag) +
                "[[device]]\nname = 'Mouse'\naddress = 'c1:d2:e3:f4:a5:ff'\nprotocols = ['le']\nis-paired = true\n");
    auto const result = RunUntilLearnt({"pair", "Tag"});
    EXPECT_THAT(result.output,
                HasSubstr("Learnt: the LE side of \"Tag\" is C1D2E3F4A5FF.\nWarning: that is not the address of the "
                          "device that was paired (c1:d2:e3:f4:a5:b6)"));
    EXPECT_THAT(result.output,
                HasSubstr("Warning: the listing had several new LE devices (C1D2E3F4A5B6, C1D2E3F4A5FF)"));
}

TEST(SlowLearn, OfNothingNewSaysSo)
{
    UseScenario(tag);
    std::ofstream(store, std::ios::binary) << "Other=C1D2E3F4A5B6\n";
    std::string output;
    for (int attempt = 0; attempt < 4 && output.find("known already") == std::string::npos; ++attempt)
    {
        output = RunVorlinkctl({"pair", "Tag"}).output;
    }
    EXPECT_THAT(output,
                HasSubstr("Nothing was learnt of an LE side: every LE device of the system's listing is known already "
                          "(C1D2E3F4A5B6)."));
    EXPECT_EQ(ReadFile(store), "Other=C1D2E3F4A5B6\n");
}

TEST(SlowLearn, WithoutAListingSaysSoAndWritesNoDataFile)
{
    for (auto const* const listing : {"[listing]\nmissing = true\n", "[listing]\nduration-ms = 3000\n"})
    {
        UseScenario(std::string(listing) + tag);
        auto const result = RunVorlinkctl({"pair", "Tag"});
        EXPECT_EQ(result.exitCode, 0u) << "it is paired";
        EXPECT_THAT(result.output, HasSubstr("\nNothing was learnt of an LE side: the system's listing of devices "));
        EXPECT_FALSE(std::filesystem::exists(store)) << listing;
    }
}

TEST(SlowLearn, ThatCannotBeKeptSaysSo)
{
    UseScenario(tag);
    std::filesystem::create_directory(store); // where the file belongs
    EXPECT_THAT(RunVorlinkctl({"pair", "Nobody"}).error, HasSubstr("MyLEData cannot be read: no LE side"));
    std::string output;
    for (int attempt = 0; attempt < 4 && output.find("Learnt:") == std::string::npos; ++attempt)
    {
        output = RunVorlinkctl({"pair", "Tag"}).output;
    }
    EXPECT_THAT(output, HasSubstr("Warning: it could not be kept, so unpairing will not find the LE side: "));
}

TEST(Learn, IsLeftOutWhenAskedTo)
{
    UseScenario(tag);
    auto const result = RunVorlinkctl({"pair", "Tag", "--no-learn"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, Not(HasSubstr("earnt")));
    EXPECT_FALSE(std::filesystem::exists(store));
}

TEST(Learn, ComesAfterAPairingAlone)
{
    UseScenario("[[device]]\nname = 'Tag'\naddress = 'c1:d2:e3:f4:a5:b6'\nis-paired = true\n");
    for (auto const* const command : {"pair", "pair-phone"})
    {
        auto const result = RunVorlinkctl({command, "Tag"});
        EXPECT_EQ(result.exitCode, 4u) << command;
        EXPECT_THAT(result.output, Not(HasSubstr("earnt")));
        EXPECT_FALSE(std::filesystem::exists(store));
    }
}
