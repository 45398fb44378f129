// vorlinkctl waits, after a pairing, for what the library learns of the device, so that unpair knows it.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"
#include "tests/support/LogFile.h"

#include <gmock/gmock.h>

#include <filesystem>

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
    EXPECT_EQ(result.output, "Paired \"Tag\" (c1:d2:e3:f4:a5:b6).\n") << "without the listing's echo";
    EXPECT_THAT(result.error, HasSubstr("Learning the device's LE side"));
}

TEST(SlowLearn, OfAPhoneIsInTheUsersFolderToo)
{
    UseScenario(tag);
    auto const result = RunUntilLearnt({"pair-phone", "Tag"});
    EXPECT_EQ(ReadFile(store), "Tag=C1D2E3F4A5B6\n");
    EXPECT_FALSE(std::filesystem::exists("ble.jpg"));
    EXPECT_THAT(result.error, HasSubstr("Learning the device's LE side"));
}

TEST(Learn, IsLeftOutWhenAskedTo)
{
    UseScenario(tag);
    auto const result = RunVorlinkctl({"pair", "Tag", "--no-learn"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.error, Not(HasSubstr("Learning")));
    EXPECT_FALSE(std::filesystem::exists(store));
}

TEST(Learn, ComesAfterAPairingAlone)
{
    UseScenario("[[device]]\nname = 'Tag'\naddress = 'c1:d2:e3:f4:a5:b6'\nis-paired = true\n");
    for (auto const* const command : {"pair", "pair-phone"})
    {
        auto const result = RunVorlinkctl({command, "Tag"});
        EXPECT_EQ(result.exitCode, 4u) << command;
        EXPECT_THAT(result.error, Not(HasSubstr("Learning")));
        EXPECT_FALSE(std::filesystem::exists(store));
    }
}
