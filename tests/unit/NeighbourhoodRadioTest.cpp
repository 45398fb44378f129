// What the radio's switch does to watchers, pairings and connections, and what listeners hear of it.
#include "simulator/neighbourhood/RadioSwitch.h"
#include "simulator/neighbourhood/Subscription.h"
#include "tests/unit/NeighbourhoodListener.h"

#include <gmock/gmock.h>

#include <atomic>

using namespace simulator;
using namespace test;
using platform::DevicePairingProtectionLevel;
using platform::DeviceWatcherStatus;
using platform::RadioState;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    constexpr char pairedPhone[] = "[[device]]\nname = 'Phone'\naddress = '00:00:00:00:00:02'\nis-paired = true\n";
    constexpr char endless[] = "[device.pairing]\nduration-ms = 'never'";

    std::string const addedSpeaker = std::string("added ") + speaker;
    std::string const addedPhone = std::string("added ") + phone;

    // The status of a pairing by the system, whose user agrees.
    std::shared_ptr<Operation> Pair(char const* id, std::shared_ptr<std::atomic<int>> const& status)
    {
        auto operation = MakePairing(id);
        StartPairing(operation, {DevicePairingProtectionLevel::Default},
                     {[] {}, [status](Outcome const& end, DevicePairingProtectionLevel) { *status = end.status; }});
        return operation;
    }

    Value ValueOf(char const* id, std::string_view property)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        return FindNeighbour(neighbourhood, id)->endpoint.properties.find(property)->second;
    }

    // The names of what has changed, after "heard".
    struct Ear
    {
        std::mutex mutex{};
        std::vector<std::string> heard{};
        std::shared_ptr<Subscription> subscription;

        explicit Ear(std::string subject)
            : subscription(new Subscription{std::move(subject), [this](std::uint64_t, Happening const& happening) {
                                                std::lock_guard const lock(mutex);
                                                heard.emplace_back("heard");
                                                for (auto const& value : happening.values)
                                                {
                                                    heard.push_back(value.first);
                                                }
                                            }})
        {
            Subscribe(subscription);
        }

        ~Ear()
        {
            Unsubscribe(subscription);
            ExpectIdle();
        }

        std::vector<std::string> Heard()
        {
            ExpectIdle();
            std::lock_guard const lock(mutex);
            return std::exchange(heard, {});
        }
    };
} // namespace

TEST(NeighbourhoodRadio, SwitchedOffAbortsStartedWatchers)
{
    Live();
    Watcher watcher;
    watcher.Start();
    watcher.ToldUpTo("completed");
    EXPECT_TRUE(SwitchRadio(RadioState::Off));
    EXPECT_THAT(watcher.Told(), ElementsAre(addedSpeaker, "completed", "stopped"));
    EXPECT_EQ(StatusOf(*watcher.watching), DeviceWatcherStatus::Aborted);
}

TEST(NeighbourhoodRadio, SwitchedOffSilencesWatchersWhereTheScenarioSaysSo)
{
    Live("appears-ms = 600000", "enumeration-completes-ms = 'never'\n[radio]\noff-watchers = 'Silent'");
    Watcher watcher;
    watcher.Start();
    EXPECT_TRUE(SwitchRadio(RadioState::Off));
    Happens({.id = speaker, .inRange = true});
    EXPECT_THAT(watcher.Told(), IsEmpty());
    EXPECT_EQ(StatusOf(*watcher.watching), DeviceWatcherStatus::Started);
}

TEST(NeighbourhoodRadio, SilencedWatchersStillComplete)
{
    Live("appears-ms = 50", "enumeration-completes-ms = 60\n[radio]\noff-watchers = 'Silent'");
    Watcher watcher;
    watcher.Start();
    EXPECT_TRUE(SwitchRadio(RadioState::Disabled));
    EXPECT_THAT(watcher.ToldUpTo("completed"), ElementsAre("completed"));
}

TEST(NeighbourhoodRadio, OffLetsAWatcherFindWhatIsPairedFromMemory)
{
    Live(pairedPhone, "enumeration-completes-ms = 0\n[radio]\nstate = 'Off'");
    Watcher watcher;
    watcher.Start();
    EXPECT_THAT(watcher.Told(), ElementsAre(addedPhone, "completed"));
}

TEST(NeighbourhoodRadio, WhatIsFoundFromMemoryIsNotPresent)
{
    Live(pairedPhone, "enumeration-completes-ms = 'never'\n[radio]\nstate = 'Off'");
    Watcher watcher;
    watcher.Start();
    watcher.ToldUpTo(addedPhone);
    EXPECT_EQ(watcher.LastProperties()["System.Devices.Aep.IsPresent"], Value(false));
}

TEST(NeighbourhoodRadio, OnAgainBringsEndpointsBackForLaterWatchers)
{
    Live("", "enumeration-completes-ms = 0\n[radio]\nstate = 'Off'");
    Watcher early;
    early.Start();
    EXPECT_THAT(early.Told(), ElementsAre("completed"));
    EXPECT_TRUE(SwitchRadio(RadioState::On));
    EXPECT_THAT(early.Told(), ElementsAre("completed"));
    Watcher late;
    late.Start();
    EXPECT_THAT(late.Told(), ElementsAre(addedSpeaker, "completed"));
}

TEST(NeighbourhoodRadio, WithoutAnAdapterNothingIsFound)
{
    Live(pairedPhone, "enumeration-completes-ms = 0\n[adapter]\npresent = false");
    Watcher watcher;
    watcher.Start();
    EXPECT_THAT(watcher.Told(), ElementsAre("completed"));
    EXPECT_FALSE(SwitchRadio(RadioState::Off));
}

TEST(NeighbourhoodRadio, OffEndsPairingsAndRefusesNewOnes)
{
    Live(endless, "[radio]\noff-pairing = 'HardwareFailure'");
    auto const status = std::make_shared<std::atomic<int>>(-1);
    Pair(speaker, status);
    EXPECT_TRUE(SwitchRadio(RadioState::Off));
    ExpectIdle();
    EXPECT_EQ(*status, 6);
    *status = -1;
    Pair(speaker, status);
    ExpectIdle();
    EXPECT_EQ(*status, 6);
    EXPECT_FALSE(IsPaired(speaker));
}

TEST(NeighbourhoodRadio, GoesOffSomeTimeAfterEachStart)
{
    Live("", "enumeration-completes-ms = 'never'\n[radio]\noff-after-ms = 20");
    for (int start = 0; start < 2; ++start)
    {
        EXPECT_TRUE(SwitchRadio(RadioState::On));
        Watcher watcher;
        watcher.Start();
        EXPECT_THAT(watcher.ToldUpTo("stopped"), ElementsAre(addedSpeaker, "stopped"));
        EXPECT_EQ(StateOfRadio(), RadioState::Off);
    }
}

TEST(NeighbourhoodRadio, GoesOffInTheNeighbourhoodThatSaidSoAlone)
{
    Live("", "[radio]\noff-after-ms = 'never'");
    SwitchRadioOffLater(TheNeighbourhood().generation, 100000);
    auto const before = TheNeighbourhood().generation;
    Live();
    ExpectIdle();
    EXPECT_EQ(StateOfRadio(), RadioState::On) << "the one that is over ends its errand";
    SwitchRadioOff(before);
    EXPECT_EQ(StateOfRadio(), RadioState::On);
}

TEST(NeighbourhoodRadio, MayGoOffOnceAPairingIsUnderWay)
{
    Live("[device.pairing]\nduration-ms = 'never'\nradio-off = true", "[radio]\noff-pairing = 'HardwareFailure'");
    auto const status = std::make_shared<std::atomic<int>>(-1);
    Pair(speaker, status);
    ExpectIdle();
    EXPECT_EQ(*status, 6);
    EXPECT_EQ(StateOfRadio(), RadioState::Off);
    EXPECT_FALSE(IsPaired(speaker));
}

TEST(NeighbourhoodRadio, OffEndsConnections)
{
    Live("[device.properties]\n'System.Devices.Aep.IsConnected' = true");
    Ear ear(speaker);
    EXPECT_TRUE(SwitchRadio(RadioState::Off));
    EXPECT_THAT(ear.Heard(), ElementsAre("heard", "System.Devices.Aep.IsConnected"));
    EXPECT_EQ(ValueOf(speaker, "System.Devices.Aep.IsConnected"), Value(false));
}

TEST(NeighbourhoodRadio, TellsListenersOfChangesAlone)
{
    Live();
    Ear ear{std::string(radioSubject)};
    EXPECT_TRUE(SwitchRadio(RadioState::On));
    EXPECT_THAT(ear.Heard(), IsEmpty());
    EXPECT_TRUE(SwitchRadio(RadioState::Off));
    EXPECT_THAT(ear.Heard(), ElementsAre("heard"));
    EXPECT_EQ(StateOfRadio(), RadioState::Off);
}

TEST(NeighbourhoodSubscription, HearsOnlyWhatIsNewOfItsOwnEndpoint)
{
    Live(pairedPhone);
    Ear ear(speaker);
    Happens({.id = phone, .values = {{"System.ItemNameDisplay", std::string("Other")}}});
    EXPECT_THAT(ear.Heard(), IsEmpty());
    Happens({.id = speaker,
             .values = {{"System.ItemNameDisplay", std::string("Speaker")}, {"system.devices.aep.isconnected", true}}});
    EXPECT_THAT(ear.Heard(), ElementsAre("heard", "System.Devices.Aep.IsConnected"));
}

TEST(NeighbourhoodSubscription, EndsWithTheNeighbourhood)
{
    Live();
    Ear ear(speaker);
    Live();
    Happens({.id = speaker, .values = {{"System.ItemNameDisplay", std::string("Other")}}});
    EXPECT_THAT(ear.Heard(), IsEmpty());
}
