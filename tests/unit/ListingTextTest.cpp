// The plug-and-play stand-in: what a scenario says of it, and the text it prints.
#include "simulator/pnputil/Listing.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>

using namespace simulator;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using testing::ThrowsMessage;

namespace
{
    std::string ListingOf(std::string const& toml)
    {
        return ListingText(ParseScenario(toml, "test.toml"));
    }

    std::string const tag = "[[device]]\naddress = 'c1:d2:e3:f4:a5:b6'\nprotocols = ['le']\n";
    std::string const alone = "[listing]\nunrelated-devices = 0\n";
} // namespace

TEST(ListingText, ADeviceAsTheToolPrintsIt)
{
    constexpr char printed[] = R"(Microsoft PnP Utility

Instance ID:                BTHLE\Dev_c1d2e3f4a5b6\8&1a2b3c4d&0&C1D2E3F4A5B6
Device Description:         ?? LE ??
Class Name:                 Bluetooth
Class GUID:                 {e0cbf06c-cd8b-4647-bb8a-263b43f0f974}
Manufacturer Name:          Microsoft
Status:                     Started
Driver Name:                bthleenum.inf

Instance ID:                BTHLEDEVICE\{0000180f-0000-1000-8000-00805f9b34fb}_Dev_c1d2e3f4a5b6\8&26e4c222&0&0014
Device Description:         Bluetooth LE battery service
Class Name:                 Bluetooth
Class GUID:                 {e0cbf06c-cd8b-4647-bb8a-263b43f0f974}
Manufacturer Name:          Microsoft
Status:                     Started

)";
    EXPECT_EQ(ListingOf(alone + tag + "is-paired = true"), printed);
}

TEST(ListingText, WithoutDevicesThereIsTheBanner)
{
    EXPECT_EQ(ListingOf(alone), "Microsoft PnP Utility\n\n");
}

TEST(ListingText, AMissingToolPrintsNothing)
{
    EXPECT_EQ(ListingOf("[listing]\nmissing = true\n" + tag + "is-paired = true"), "");
}

TEST(ListingText, WhatIsPairedIsListedUnlessTheScenarioSaysOtherwise)
{
    EXPECT_THAT(ListingOf(tag), Not(HasSubstr("c1d2e3f4a5b6")));
    EXPECT_THAT(ListingOf(tag + "listed = true"), HasSubstr(R"(BTHLE\Dev_c1d2e3f4a5b6\)"));
    EXPECT_THAT(ListingOf(tag + "is-paired = true\nlisted = false"), Not(HasSubstr("c1d2e3f4a5b6")));
}

TEST(ListingText, ClassicEndpointsAreNotListed)
{
    EXPECT_THAT(ListingOf("[[device]]\naddress = 'c1:d2:e3:f4:a5:b6'\nis-paired = true\nlisted = true\n"),
                Not(HasSubstr("c1d2e3f4a5b6")));
}

TEST(ListingText, DescriptionAndInstanceAreTheScenariosOwn)
{
    auto const text = ListingOf(tag + "listed = true\ndescription = 'Tag of Zoë 📱'\n[device.le]\n"
                                      "properties.'System.Devices.DeviceInstanceId' = 'BTHLE\\Dev_odd'\n");
    EXPECT_THAT(text, HasSubstr("Instance ID:                BTHLE\\Dev_odd\n"
                                "Device Description:         Tag of Zo? ??\n"));
}

TEST(ListingText, UnrelatedDevicesStandAroundTheOthers)
{
    auto const text = ListingOf("[listing]\nunrelated-devices = 10\n" + tag + "listed = true");
    auto const count = [](std::string_view part) {
        std::size_t found = 0;
        for (auto at = part.find("Instance ID:"); at != part.npos; at = part.find("Instance ID:", at + 1))
        {
            ++found;
        }
        return found;
    };
    auto const middle = text.find(R"(BTHLE\Dev_)");
    ASSERT_NE(middle, std::string::npos);
    EXPECT_EQ(count(std::string_view(text).substr(0, middle)), 5u + 1u) << "its own label too";
    EXPECT_EQ(count(std::string_view(text).substr(middle)), 5u + 1u) << "its service too";
}

TEST(ListingText, LongListingsHaveOneInstanceADevice)
{
    auto const text = ListingOf("[listing]\nunrelated-devices = 12500\n");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2 + 12500 * 8);
    EXPECT_THAT(text, HasSubstr(R"(USB\ROOT_HUB30\4&00000c34)"));
}

TEST(ListingText, LabelsInOtherLanguages)
{
    std::string const device = "\n" + tag + "listed = true";
    auto const german = ListingOf(alone + "language = 'German'" + device);
    EXPECT_THAT(german, StartsWith("Microsoft-PnP-Hilfsprogramm\n\nInstanz-ID:                 BTHLE\\Dev_"));
    EXPECT_THAT(german, HasSubstr("\nGer?tebeschreibung:         ?? LE ??\n"));
    auto const chinese = ListingOf(alone + "language = 'Chinese'" + device);
    EXPECT_THAT(chinese, StartsWith("Microsoft PnP ??\n\n?? ID:                      BTHLE\\Dev_"));
    EXPECT_THAT(chinese, HasSubstr("\n????:                       ?? LE ??\n"));
}

TEST(ListingText, TheScenariosWordsAreRead)
{
    auto const listing = ParseScenario("[listing]\nlanguage = 'Chinese'\nunrelated-devices = 7\nduration-ms = 2000\n"
                                       "missing = true\n",
                                       "test.toml")
                             .listing;
    EXPECT_EQ(listing.language, ListingLanguage::Chinese);
    EXPECT_EQ(listing.unrelatedDevices, 7);
    EXPECT_EQ(listing.durationMs, 2000);
    EXPECT_TRUE(listing.missing);
    auto const usual = ParseScenario("", "test.toml").listing;
    EXPECT_EQ(usual.language, ListingLanguage::English);
    EXPECT_EQ(usual.unrelatedDevices, 4);
    EXPECT_EQ(usual.durationMs, 0);
    EXPECT_FALSE(usual.missing);
}

TEST(ListingText, FaultsInTheScenarioAreRefused)
{
    auto const refused = [](std::string const& line, std::string const& reason) {
        EXPECT_THAT([&] { ParseScenario("[listing]\n" + line, "t.toml"); },
                    ThrowsMessage<ScenarioError>(StartsWith("t.toml:2: " + reason)))
            << line;
    };
    refused("language = 'Klingon'", "'language': 'Klingon' where a name is expected: English, German, Chinese");
    refused("unrelated-devices = -1", "'unrelated-devices': -1 where a number from 0 to 2147483647 is expected");
    refused("unrelated-devices = 'many'", "'unrelated-devices': 'many' where a number from 0 to");
    refused("duration-ms = 'never'", "'duration-ms': 'never' where a number from 0 to 2147483647 is expected");
    refused("mising = true", "'mising': unknown key");
}
