// What is read out of a plug-and-play listing, and what is echoed of it.
#include "pairing/DeviceListing.h"

#include <gmock/gmock.h>

#include <sstream>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    constexpr char tag[] = R"(Instance ID:    BTHLE\Dev_c1d2e3f4a5b6\8&1a2b3c4d&0&C1D2E3F4A5B6)";
    constexpr char lamp[] = R"(Instance ID:    BTHLE\Dev_cc50e318f69d\8&1a2b3c4d&0&CC50E318F69D)";
    constexpr char le[] = "Device Description: ?? LE ??";

    struct Reading
    {
        std::vector<std::string> events;
        std::string echo;
    };

    Reading Read(std::string const& listing)
    {
        Reading reading;
        std::istringstream stream(listing);
        std::ostringstream echo;
        vorlink::ReadListing(stream, echo,
                             {[&](std::string const& line) { reading.events.push_back("instance " + line); },
                              [&](std::string const& piece) { reading.events.push_back("address " + piece); }});
        reading.echo = echo.str();
        return reading;
    }

    std::string Lines(std::initializer_list<std::string> lines)
    {
        std::string text;
        for (auto const& line : lines)
        {
            text += line + "\n";
        }
        return text;
    }
} // namespace

TEST(DeviceListing, AnLeDeviceGivesItsFourthPiece)
{
    auto const reading = Read(Lines({tag, le}));
    EXPECT_THAT(reading.events, ElementsAre(std::string("instance ") + tag, "address C1D2E3F4A5B6"));
    EXPECT_EQ(reading.echo, Lines({tag, "", le}));
}

TEST(DeviceListing, EachLineIsEchoedWithTheLatestDescriptionBehindIt)
{
    EXPECT_EQ(Read(Lines({"Microsoft PnP Utility", "", "Instance ID:  USB", tag, le, "Status:  Started", "", lamp, "x",
                          "Status:  Started"}))
                  .echo,
              Lines({"Microsoft PnP Utility", "", "Instance ID:  USB", "", tag, "", le, "Status:  Started", le, lamp,
                     le, "x", "Status:  Started", "x"}));
}

TEST(DeviceListing, EmptyListingGivesNothing)
{
    EXPECT_THAT(Read("").events, IsEmpty());
    EXPECT_EQ(Read("").echo, "");
}

TEST(DeviceListing, EmptyLinesAreNotEchoed)
{
    EXPECT_EQ(Read("\n\r\n\n").echo, "");
}

TEST(DeviceListing, CarriageReturnsAreNoPartOfALine)
{
    auto const reading = Read(std::string("Utility\r\n\r\n") + tag + "\r\n" + le + "\r\n\r\n");
    EXPECT_THAT(reading.events, ElementsAre(std::string("instance ") + tag, "address C1D2E3F4A5B6"));
    EXPECT_EQ(reading.echo, Lines({"Utility", "", tag, "", le}));
}

TEST(DeviceListing, DescriptionWithoutTheMarkGivesNoAddress)
{
    for (std::string const description : {"Device Description: Bluetooth LE device", "Device Description: ? LE ??",
                                          "?? LE ?", "??LE??", "?? le ??", ""})
    {
        EXPECT_THAT(Read(Lines({tag, description})).events, ElementsAre(std::string("instance ") + tag)) << description;
    }
}

TEST(DeviceListing, TheMarkMayStandAnywhereInTheDescription)
{
    EXPECT_THAT(Read(Lines({tag, "???? ??? LE ??? x"})).events,
                ElementsAre(std::string("instance ") + tag, "address C1D2E3F4A5B6"));
}

TEST(DeviceListing, TheMarkCountsOnTheNextLineAlone)
{
    EXPECT_THAT(Read(Lines({tag, "", le})).events, ElementsAre(std::string("instance ") + tag));
    EXPECT_THAT(Read(Lines({std::string(tag) + " ?? LE ??", "x"})).events,
                ElementsAre(std::string("instance ") + tag + " ?? LE ??"));
    EXPECT_THAT(Read(Lines({le, tag, "x"})).events, ElementsAre(std::string("instance ") + tag));
}

TEST(DeviceListing, LabelsDoNotMatter)
{
    std::string const chinese = R"(?? ID:   BTHLE\Dev_c1d2e3f4a5b6\8&1a2b3c4d&0&C1D2E3F4A5B6)";
    EXPECT_THAT(Read(Lines({chinese, "????:   ?? LE ??"})).events,
                ElementsAre("instance " + chinese, "address C1D2E3F4A5B6"));
    std::string const bytes = "\xca\xb5\xc0\xfd ID: " + chinese;
    EXPECT_THAT(Read(Lines({bytes, "\xe4\xff ?? LE ??"})).events,
                ElementsAre("instance " + bytes, "address C1D2E3F4A5B6"));
}

TEST(DeviceListing, EveryDeviceIsGivenInTheListingsOrder)
{
    EXPECT_THAT(Read(Lines({tag, le, "", lamp, le})).events,
                ElementsAre(std::string("instance ") + tag, "address C1D2E3F4A5B6", std::string("instance ") + lamp,
                            "address CC50E318F69D"));
}

TEST(DeviceListing, AnIdentifierInTheDescriptionsPlaceIsADescription)
{
    auto const reading = Read(Lines({tag, lamp, le}));
    EXPECT_THAT(reading.events, ElementsAre(std::string("instance ") + tag));
    EXPECT_EQ(reading.echo, Lines({tag, "", lamp, le, lamp}));
}

TEST(DeviceListing, OtherBluetoothNodesAreNotLeDevices)
{
    auto const reading = Read(Lines({R"(BTHENUM\Dev_887598C2F5F2\7&2768a9f8&0&BluetoothDevice_887598C2F5F2)", le,
                                     R"(BTHLEDEVICE\{0000180f}_Dev_887598c2f5f2\8&26e4c222&0&0014)", le,
                                     R"(bthle\dev_887598c2f5f2\7&2832959&0&887598c2f5f2)", le}));
    EXPECT_THAT(reading.events, IsEmpty());
}

TEST(DeviceListing, FewerThanFourPiecesGiveNoAddress)
{
    for (std::string const line : {R"(BTHLE\Dev_c1)", R"(BTHLE\Dev_c1\8&1a&0)", R"(BTHLE\Dev_c1\8&1a&0&)"})
    {
        auto const reading = Read(Lines({line, le, "Status"}));
        EXPECT_THAT(reading.events, ElementsAre("instance " + line));
        EXPECT_EQ(reading.echo, Lines({line, "", le, "Status", le})) << "and are echoed all the same";
    }
}

TEST(DeviceListing, OfMoreThanFourPiecesTheFourthIsTaken)
{
    std::string const line = R"(BTHLE\Dev_c1\8&1a&0&FOURTH&FIFTH)";
    EXPECT_THAT(Read(Lines({line, le})).events, ElementsAre("instance " + line, "address FOURTH"));
}

TEST(DeviceListing, TheFourthPieceMayBeEmpty)
{
    std::string const line = R"(BTHLE\Dev_c1\8&1a&0&&x)";
    EXPECT_THAT(Read(Lines({line, le})).events, ElementsAre("instance " + line, "address "));
}

TEST(DeviceListing, AnIdentifierAtTheEndHasNoDescription)
{
    for (std::string const end : {"", "\n", "\r\n"})
    {
        auto const reading = Read(Lines({tag, le}) + lamp + end);
        EXPECT_THAT(reading.events, ElementsAre(std::string("instance ") + tag, "address C1D2E3F4A5B6",
                                                std::string("instance ") + lamp));
        EXPECT_EQ(reading.echo, Lines({tag, "", le, lamp, le, ""}));
    }
}
