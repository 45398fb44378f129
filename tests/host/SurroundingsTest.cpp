// The program's own look at what is around: what it tells of each device, and how it follows changes.
#include "host/Surroundings.h"
#include "tests/support/CodeOf.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <stdexcept>

using namespace test;
using namespace host;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

namespace
{
    constexpr Selector classic{Protocol::Classic};
    constexpr Selector le{Protocol::Le};
    constexpr std::chrono::milliseconds atOnce{0};

    // "+ Classic Tag", in the order in which they come.
    std::vector<std::string> Texts(std::vector<Sighting> const& sightings)
    {
        std::vector<std::string> texts;
        texts.reserve(sightings.size());
        for (auto const& [kind, device] : sightings)
        {
            texts.push_back(std::string(kind == Sighting::Kind::Added     ? "+"
                                        : kind == Sighting::Kind::Updated ? "~"
                                                                          : "-") +
                            (device.protocol == Protocol::Le ? " LE " : " Classic ") + device.name);
        }
        return texts;
    }

    // All that the platform has to tell by now.
    std::vector<Sighting> TakeAll(Surroundings& surroundings)
    {
        EXPECT_TRUE(WaitIdle());
        return surroundings.Take(atOnce);
    }

    std::string const both = "protocols = ['classic', 'le']\n";
} // namespace

TEST(Surroundings, TellAllOfADevice)
{
    Load(prompt + Device("Tag", tagAddress,
                         "is-paired = true\ncan-pair = false\n[device.properties]\n"
                         "'System.Devices.Aep.IsConnected' = true\n'System.Devices.Aep.IsPresent' = false\n"
                         "'System.Devices.Aep.SignalStrength' = -48\n"));
    Surroundings surroundings({classic});
    Seen const expected{.id = ClassicId(tagAddress),
                        .name = "Tag",
                        .address = tagAddress,
                        .protocol = Protocol::Classic,
                        .paired = true,
                        .canPair = false,
                        .connected = true,
                        .present = false,
                        .signal = -48};
    auto const seen = TakeAll(surroundings);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].device, expected);
    EXPECT_EQ(seen[0].kind, Sighting::Kind::Added);
}

TEST(Surroundings, TellTheOppositeAsWell)
{
    Load(prompt + Device("", tagAddress,
                         "protocols = ['le']\n[device.properties]\n"
                         "'System.Devices.Aep.IsPresent' = true\n"));
    Surroundings surroundings({le});
    auto const seen = TakeAll(surroundings);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].device.id, LeId(tagAddress));
    EXPECT_EQ(seen[0].device.name, "");
    EXPECT_EQ(seen[0].device.protocol, Protocol::Le);
    EXPECT_FALSE(seen[0].device.paired);
    EXPECT_TRUE(seen[0].device.canPair);
    EXPECT_FALSE(seen[0].device.connected);
    EXPECT_TRUE(seen[0].device.present);
}

TEST(Surroundings, AMissingSignalIsNone)
{
    Load(prompt +
         Device("Tag", tagAddress,
                "[[device.change]]\nat-ms = 0\nproperty = 'System.Devices.Aep.SignalStrength'\nunset = true\n"));
    Surroundings surroundings({classic});
    auto const seen = TakeAll(surroundings);
    ASSERT_THAT(seen, Not(IsEmpty()));
    EXPECT_EQ(seen.back().device.signal, std::nullopt);
}

TEST(Surroundings, AreOfTheProtocolsThatAreAskedFor)
{
    auto const scenario = prompt + Device("Tag", tagAddress, both);
    Load(scenario);
    {
        Surroundings surroundings({classic});
        EXPECT_THAT(Texts(TakeAll(surroundings)), ElementsAre("+ Classic Tag"));
    }
    {
        Surroundings surroundings({le});
        EXPECT_THAT(Texts(TakeAll(surroundings)), ElementsAre("+ LE Tag"));
    }
    Surroundings surroundings({classic, le});
    EXPECT_THAT(Texts(TakeAll(surroundings)), UnorderedElementsAre("+ Classic Tag", "+ LE Tag"));
}

TEST(Surroundings, OfAnUnfilteredReportTheIdentifierTellsTheProtocol)
{
    Load(prompt + Device("Tag", tagAddress, "protocols = ['le']\nunfiltered = true\n"));
    Surroundings surroundings({classic});
    EXPECT_THAT(Texts(TakeAll(surroundings)), ElementsAre("+ LE Tag"));
}

TEST(Surroundings, OfAnIdentifierOfAnotherFormTheSearchTellsTheProtocol)
{
    Load(prompt + Device("Tag", tagAddress, "protocols = ['le']\n[device.le]\nid = 'something else'\n"));
    Surroundings surroundings({le});
    EXPECT_THAT(Texts(TakeAll(surroundings)), ElementsAre("+ LE Tag"));
}

TEST(Surroundings, AreAmongThoseThatAreAskedFor)
{
    Load(prompt + Device("Neither", "00:00:00:00:00:01", "can-pair = false\n") +
         Device("Pairable", "00:00:00:00:00:02") +
         Device("Paired", "00:00:00:00:00:03", "can-pair = false\nis-paired = true\n"));
    {
        Surroundings surroundings({{Protocol::Classic, Among::Pairable}});
        EXPECT_THAT(Texts(TakeAll(surroundings)), UnorderedElementsAre("+ Classic Pairable", "+ Classic Paired"));
    }
    Surroundings surroundings({{Protocol::Classic, Among::Paired}});
    EXPECT_THAT(Texts(TakeAll(surroundings)), ElementsAre("+ Classic Paired"));
}

TEST(Surroundings, FollowAnUpdate)
{
    Load(patient + Device("Tag", tagAddress));
    Surroundings surroundings({classic});
    TakeAll(surroundings);
    ASSERT_TRUE(SimulateDeviceChanges(ClassicId(tagAddress).c_str(), "System.ItemNameDisplay", "'Renamed'"));
    EXPECT_THAT(Texts(TakeAll(surroundings)), ElementsAre("~ Classic Renamed"));
    ASSERT_TRUE(SimulateDeviceChanges(ClassicId(tagAddress).c_str(), "System.Devices.Aep.IsPaired", "true"));
    auto const seen = TakeAll(surroundings);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_TRUE(seen[0].device.paired);
    EXPECT_EQ(seen[0].device.name, "Renamed");
}

TEST(Surroundings, LeaveOutAnUpdateOfWhatTheyDoNotTell)
{
    Load(patient + Device("Tag", tagAddress));
    Surroundings surroundings({classic});
    TakeAll(surroundings);
    auto const id = ClassicId(tagAddress);
    ASSERT_TRUE(SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay", "'Tag'"));
    ASSERT_TRUE(SimulateDeviceRepeats(id.c_str()));
    EXPECT_THAT(Texts(TakeAll(surroundings)), IsEmpty());
}

TEST(Surroundings, FollowADeviceOnThatIsRepeated)
{
    Load(patient + Device("Tag", tagAddress));
    Surroundings surroundings({classic});
    TakeAll(surroundings);
    auto const id = ClassicId(tagAddress);
    ASSERT_TRUE(SimulateDeviceRepeats(id.c_str()));
    ASSERT_TRUE(SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay", "'Renamed'"));
    EXPECT_THAT(Texts(TakeAll(surroundings)), ElementsAre("~ Classic Renamed"));
}

TEST(Surroundings, TellOfADeviceThatLeavesWhatWasKnownLast)
{
    Load(patient + Device("Tag", tagAddress));
    Surroundings surroundings({classic});
    TakeAll(surroundings);
    auto const id = ClassicId(tagAddress);
    ASSERT_TRUE(SimulateDeviceLeaves(id.c_str()));
    EXPECT_THAT(Texts(TakeAll(surroundings)), ElementsAre("- Classic Tag"));
    ASSERT_TRUE(SimulateDeviceAppears(id.c_str()));
    EXPECT_THAT(Texts(TakeAll(surroundings)), ElementsAre("+ Classic Tag"));
}

TEST(Surroundings, AreCompleteWhenEverySearchIs)
{
    Load(patient + Device("Tag", tagAddress, both));
    Surroundings surroundings({classic, le});
    TakeAll(surroundings);
    EXPECT_FALSE(surroundings.IsComplete());
    SimulateEnumerationCompletes();
    EXPECT_TRUE(WaitIdle());
    EXPECT_FALSE(surroundings.IsComplete()) << "before what they have found is taken";
    TakeAll(surroundings);
    EXPECT_TRUE(surroundings.IsComplete());
}

TEST(Surroundings, TellAllThatIsThere)
{
    Load(patient + Device("Gone", "00:00:00:00:00:01") + Device("Tag", tagAddress));
    Surroundings surroundings({classic});
    EXPECT_TRUE(WaitIdle());
    EXPECT_THAT(surroundings.All(), IsEmpty()) << "nothing has been taken";
    surroundings.Take(atOnce);
    ASSERT_TRUE(SimulateDeviceLeaves(ClassicId("00:00:00:00:00:01").c_str()));
    ASSERT_TRUE(SimulateDeviceChanges(ClassicId(tagAddress).c_str(), "System.ItemNameDisplay", "'Renamed'"));
    TakeAll(surroundings);
    auto const all = surroundings.All();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].name, "Renamed");
}

TEST(Surroundings, WaitForAChangeAsLongAsTheyAreTold)
{
    Load(patient);
    Surroundings surroundings({classic});
    auto const start = std::chrono::steady_clock::now();
    EXPECT_THAT(surroundings.Take(moment), IsEmpty());
    EXPECT_GE(std::chrono::steady_clock::now() - start, moment);
}

TEST(Surroundings, EndTheirSearchesWithThem)
{
    Load(patient);
    SimulatorClearTrace();
    {
        Surroundings const surroundings({classic, le});
    }
    EXPECT_EQ(Trace({"DeviceWatcher.Stop("}).size(), 2u);
}

TEST(Surroundings, ThatThePlatformStopsAreAFailure)
{
    Load(patient + Device("Tag", tagAddress));
    Surroundings surroundings({classic});
    TakeAll(surroundings);
    SimulateWatchersAbort();
    EXPECT_THROW(TakeAll(surroundings), std::runtime_error);
}

TEST(Surroundings, AFailingPlatformThrowsItsCode)
{
    Load(prompt + Device("Tag", tagAddress));
    for (auto const* const method : {createWatcher, "DeviceWatcher.add_Removed", "DeviceWatcher.Start"})
    {
        ASSERT_TRUE(SimulateFailure(method, platformCode)) << method;
        EXPECT_EQ(CodeOf([] { Surroundings const surroundings({classic}); }), platformCode) << method;
    }
    for (auto const* const method :
         {"DeviceInformation.get_Properties", "DeviceInformation.get_Name", "DeviceInformationPairing.get_IsPaired"})
    {
        Surroundings surroundings({classic});
        EXPECT_TRUE(WaitIdle());
        ASSERT_TRUE(SimulateFailure(method, platformCode)) << method;
        EXPECT_EQ(CodeOf([&] { surroundings.Take(atOnce); }), platformCode) << method;
    }
}

TEST(Naming, IsEqualForAShortNameAndContainedForALongOne)
{
    EXPECT_TRUE(IsNamed("Tag", "Tag"));
    EXPECT_FALSE(IsNamed("Tag 2", "Tag"));
    EXPECT_FALSE(IsNamed("tag", "Tag"));
    EXPECT_FALSE(IsNamed("My Kitchen Speak", "Kitchen Speak")) << "13 bytes";
    EXPECT_TRUE(IsNamed("My Kitchen Speaker", "Kitchen Speake")) << "14 bytes";
    EXPECT_TRUE(IsNamed("Alte Küchenradio", "te Küchenradi")) << "13 characters in 14 bytes";
    EXPECT_FALSE(IsNamed("My Kitchen Speaker", "kitchen speaker"));
}
