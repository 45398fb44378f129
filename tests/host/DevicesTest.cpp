// What is around as a table: which endpoints are one device, in which order, and what fits.
#include "host/Text.h"
#include "host/list/Devices.h"

#include <gmock/gmock.h>

using namespace host;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{
    constexpr char speakerAddress[] = "a4:c1:38:5e:22:0f";

    Seen Endpoint(Protocol protocol, std::string const& name, std::string const& address = speakerAddress)
    {
        Seen seen;
        seen.protocol = protocol;
        seen.name = name;
        seen.address = address;
        seen.id = TextOf(protocol) + address;
        seen.canPair = true;
        seen.signal = -60;
        return seen;
    }

    Seen Classic(std::string const& name = "Speaker", std::string const& address = speakerAddress)
    {
        return Endpoint(Protocol::Classic, name, address);
    }

    Seen Le(std::string const& name = "Speaker", std::string const& address = speakerAddress)
    {
        return Endpoint(Protocol::Le, name, address);
    }

    Seen Paired(Seen seen)
    {
        seen.paired = true;
        return seen;
    }

    Seen Connected(Seen seen)
    {
        seen.connected = true;
        return seen;
    }

    Seen Heard(Seen seen, std::optional<int> signal)
    {
        seen.signal = signal;
        return seen;
    }

    std::vector<std::string> Names(std::vector<Seen> const& endpoints)
    {
        std::vector<std::string> names;
        for (auto const& device : ToDevices(endpoints))
        {
            names.push_back(NameOf(device));
        }
        return names;
    }
} // namespace

TEST(Devices, AreTheEndpointsOfOneAddress)
{
    auto const devices = ToDevices({Le(), Classic("Speaker"), Classic("Other", "00:00:00:00:00:01")});
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_THAT(devices[0], ElementsAre(Classic("Other", "00:00:00:00:00:01")));
    EXPECT_THAT(devices[1], ElementsAre(Classic(), Le())) << "Classic first";
}

TEST(Devices, WithoutAnAddressAreApart)
{
    auto first = Classic("A", "");
    auto second = Classic("B", "");
    first.id = "1";
    second.id = "2";
    EXPECT_THAT(Names({first, second}), ElementsAre("A", "B"));
}

TEST(Devices, HaveTheNameThatEitherEndpointHas)
{
    EXPECT_THAT(Names({Classic("Speaker"), Le("LE_Speaker")}), ElementsAre("Speaker"));
    EXPECT_THAT(Names({Classic(""), Le("LE_Speaker")}), ElementsAre("LE_Speaker"));
    EXPECT_THAT(Names({Classic(""), Le("")}), ElementsAre(""));
}

TEST(Devices, AreInTheOrderOfPairingSignalAndName)
{
    EXPECT_THAT(Names({Classic("Z", "1"), Classic("A", "2"), Classic("", "3"), Heard(Classic("Near", "4"), -40),
                       Heard(Classic("Unheard", "5"), std::nullopt), Paired(Heard(Classic("Far", "6"), -90)),
                       Paired(Heard(Le("Farther", "7"), -95))}),
                ElementsAre("Far", "Farther", "Near", "A", "Z", "", "Unheard"));
}

TEST(Devices, AreAsLoudAsTheLouderEndpoint)
{
    EXPECT_EQ(SignalOf({Heard(Classic(), -70), Heard(Le(), -50)}), -50);
    EXPECT_EQ(SignalOf({Heard(Classic(), std::nullopt), Heard(Le(), -50)}), -50);
    EXPECT_EQ(SignalOf({Heard(Classic(), std::nullopt)}), std::nullopt);
}

TEST(Devices, StateIsThatOfBothEndpoints)
{
    auto unpairable = Classic();
    unpairable.canPair = false;
    EXPECT_EQ(StateOf({Classic(), Le()}), "can pair");
    EXPECT_EQ(StateOf({unpairable}), "cannot pair");
    EXPECT_EQ(StateOf({unpairable, Le()}), "can pair");
    EXPECT_EQ(StateOf({Paired(Classic()), Paired(Le())}), "paired");
    EXPECT_EQ(StateOf({Paired(Le())}), "paired");
    EXPECT_EQ(StateOf({Paired(Classic()), Le()}), "Classic paired");
    EXPECT_EQ(StateOf({Classic(), Paired(Le())}), "LE paired");
    EXPECT_EQ(StateOf({Paired(Classic()), Connected(Le())}), "Classic paired, connected");
    EXPECT_EQ(StateOf({Connected(Classic())}), "can pair, connected");
}

TEST(DeviceTable, ShowsEachColumn)
{
    auto const table = LayOut(ToDevices({Paired(Classic()), Heard(Le(), -48)}), 79);
    EXPECT_EQ(table.heading, "Name     Address            Protocols     State           Signal");
    EXPECT_THAT(table.rows, ElementsAre("Speaker  a4:c1:38:5e:22:0f  Classic + LE  Classic paired  -48 dBm"));
}

TEST(DeviceTable, LinesUpWithNamesOfAnyScript)
{
    auto const table =
        LayOut(ToDevices({Classic("音箱", "00:00:00:00:00:01"), Classic("Lamp", "00:00:00:00:00:02")}), 79);
    EXPECT_THAT(table.rows, ElementsAre(StartsWith("Lamp  00:"), StartsWith("音箱  00:")));
}

TEST(DeviceTable, LeavesOutProtocolsThenSignalThenAddress)
{
    auto const devices = ToDevices({Classic("A speaker of a long name"), Le("A speaker of a long name")});
    auto const heading = [&](std::size_t columns) { return LayOut(devices, columns).heading; };
    constexpr char all[] = "Name              Address            Protocols     State     Signal";
    constexpr char withoutProtocols[] = "Name              Address            State     Signal";
    EXPECT_EQ(heading(68), all) << "with the name cut to 16 columns";
    EXPECT_EQ(heading(54), withoutProtocols);
    EXPECT_THAT(heading(67), AllOf(Not(HasSubstr("Protocols")), HasSubstr("Signal")));
    EXPECT_THAT(heading(53), AllOf(Not(HasSubstr("Signal")), HasSubstr("Address")));
    EXPECT_THAT(heading(45), HasSubstr("Address"));
    EXPECT_THAT(heading(44), AllOf(Not(HasSubstr("Address")), HasSubstr("State")));
}

TEST(DeviceTable, NeverOutgrowsTheWindow)
{
    auto const devices = ToDevices({Connected(Paired(Classic("A speaker of a rather long name"))), Le(""),
                                    Heard(Le("Küchenlautsprecher 厨房音箱", "00:00:00:00:00:01"), -100)});
    for (std::size_t columns = 1; columns < 100; ++columns)
    {
        auto const table = LayOut(devices, columns);
        EXPECT_LE(Columns(table.heading), columns);
        for (auto const& row : table.rows)
        {
            EXPECT_LE(Columns(row), columns) << row;
        }
    }
}

TEST(DeviceTable, CutsNamesOnlyWhereItMust)
{
    std::string const name = "A speaker of a rather long name";
    auto const devices = ToDevices({Classic(name)});
    EXPECT_THAT(LayOut(devices, 80).rows, ElementsAre(StartsWith(name + "  a4:")));
    EXPECT_THAT(LayOut(devices, 60).rows, ElementsAre(AllOf(Not(StartsWith(name)), HasSubstr("…  a4:"))));
    EXPECT_THAT(LayOut(devices, 42).rows, ElementsAre(name + "  can pair"));
}

TEST(DeviceTable, HasSomethingForADeviceWithoutAName)
{
    EXPECT_THAT(LayOut(ToDevices({Classic("")}), 79).rows, ElementsAre(StartsWith("(no name)  a4:")));
}

TEST(DeviceTable, IsHarmless)
{
    EXPECT_THAT(LayOut(ToDevices({Classic("a\x1b[2J", "b\nc")}), 79).rows,
                ElementsAre(StartsWith("a\\x1B[2J  b\\x0Ac")));
    EXPECT_THAT(LineOf(Classic("a\nb", "\x1b")), StartsWith("a\\x0Ab  \\x1B  "));
}

TEST(DeviceLine, TellsWhatIsKnownOfOneEndpoint)
{
    EXPECT_EQ(LineOf(Heard(Le(), -48)), "Speaker  a4:c1:38:5e:22:0f  LE  can pair  -48 dBm");
    EXPECT_EQ(LineOf(Heard(Paired(Classic("")), std::nullopt)), "(no name)  a4:c1:38:5e:22:0f  Classic  paired");
}
