// The verbs themselves: what they refuse, what they count and wait for.
#include "tests/simulator/Client.h"

#include <thread>

using namespace test;
using testing::HasSubstr;

namespace
{
    constexpr auto nobody = "Bluetooth#Bluetooth00:1a:7d:da:71:13-00:00:00:00:00:00";

    using Verbs = SimulatorTest;
} // namespace

TEST_F(Verbs, RefuseEndpointsThatDoNotExist)
{
    EXPECT_EQ(SimulateDeviceAppears(nobody), 0);
    EXPECT_THAT(SimulatorLastError(), HasSubstr(nobody));
    EXPECT_EQ(SimulateDeviceLeaves(nobody), 0);
    EXPECT_EQ(SimulateDeviceRepeats(nobody), 0);
    EXPECT_EQ(SimulateDeviceChanges(nobody, "System.ItemNameDisplay", "\"x\""), 0);
    EXPECT_EQ(SimulatePairingCompletes(nobody, 0), 0);
    EXPECT_EQ(SimulatePairingFails(nobody, E_FAIL), 0);
    EXPECT_EQ(SimulateUnpairingCompletes(nobody, 0), 0);
    EXPECT_EQ(SimulateUnpairingFails(nobody, E_FAIL), 0);
    EXPECT_EQ(SimulateDeviceAppears(nullptr), 0);
}

TEST_F(Verbs, RefuseArrivalsOfThoseInRangeAndDeparturesOfOthers)
{
    EXPECT_EQ(SimulateDeviceAppears(speaker), 0);
    EXPECT_THAT(SimulatorLastError(), HasSubstr("in range"));
    EXPECT_EQ(SimulateDeviceLeaves(lamp), 0);
    EXPECT_EQ(SimulateDeviceRepeats(lamp), 0);
    EXPECT_THAT(SimulatorLastError(), HasSubstr("not in range"));
    EXPECT_EQ(SimulateDeviceAppears(lamp), 1);
    EXPECT_STREQ(SimulatorLastError(), "");
    EXPECT_EQ(SimulateDeviceAppears(lamp), 0);
    EXPECT_EQ(SimulateDeviceLeaves(speaker), 1);
    EXPECT_EQ(SimulateDeviceLeaves(speaker), 0);
}

TEST_F(Verbs, RefuseValuesAndPropertiesThatAreWrong)
{
    EXPECT_EQ(SimulateDeviceChanges(speaker, "System.NoSuch", "1"), 0);
    EXPECT_EQ(SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "12"), 0);
    EXPECT_EQ(SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "]"), 0);
    EXPECT_EQ(SimulateDeviceChanges(speaker, nullptr, "1"), 0);
    EXPECT_EQ(SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", nullptr), 0);
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(Verbs, KeepTheirErrorsPerThread)
{
    SimulateDeviceAppears(nobody);
    std::thread([] { EXPECT_STREQ(SimulatorLastError(), ""); }).join();
    EXPECT_STRNE(SimulatorLastError(), "");
}

TEST_F(Verbs, ChangeNothingOnAFaultyScenario)
{
    auto const watcher = MakeWatcher();
    EXPECT_EQ(SimulateScenario("[[device]]\naddress = 7\nnam = 1\n"), 0);
    EXPECT_STREQ(SimulatorLastError(),
                 "scenario:2: 'address': 7 where an address like 'a4:c1:38:5e:22:0f' is expected\n"
                 "scenario:3: 'nam': unknown key; did you mean 'name'?");
    EXPECT_EQ(SimulateScenario(nullptr), 0);
    EXPECT_EQ(watcher->Start(), S_OK); // it was not cut off
    EXPECT_EQ(NameOf(FindDevice(speaker)), "Kitchen Speaker");
}

TEST_F(Verbs, CheckAScenarioAndLeaveTheOneThatPlays)
{
    auto const watcher = MakeWatcher();
    auto const faults = [](char const* toml, char const* source) {
        std::string text(SimulatorCheckScenario(toml, source, nullptr, 0), '#');
        EXPECT_EQ(SimulatorCheckScenario(toml, source, text.data(), text.size()), text.size());
        EXPECT_EQ(text.back(), '\0');
        text.pop_back();
        return text;
    };
    EXPECT_EQ(faults("", "room.toml"), "");
    EXPECT_EQ(faults("event-threads = 4\n", "room.toml"), "");
    EXPECT_EQ(faults("event-threads = 0\n[[device]]\n", "room.toml"),
              "room.toml:1: 'event-threads': 0 where a number from 1 to 64 is expected\n"
              "room.toml:2: 'address': missing; a device needs it");
    EXPECT_THAT(faults("\n]", nullptr), testing::StartsWith("scenario:2: "));
    EXPECT_NE(faults(nullptr, nullptr), "");
    std::string cut = "######";
    EXPECT_GT(SimulatorCheckScenario("]", "room.toml", cut.data(), 5), 5u);
    EXPECT_EQ(cut, std::string("room\0#", 6));
    EXPECT_EQ(watcher->Start(), S_OK); // it was not cut off
    EXPECT_EQ(NameOf(FindDevice(speaker)), "Kitchen Speaker");
}

TEST_F(Verbs, CountObjects)
{
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
    auto watcher = MakeWatcher();
    EXPECT_EQ(SimulatorLiveObjects(), 1u);
    watcher.Reset();
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}

TEST_F(Verbs, WaitForNothingWhenNothingIsUnderWay)
{
    EXPECT_EQ(SimulatorWaitIdle(0), 1);
}

TEST_F(Verbs, WaitOnlyForTimersThatAreDue)
{
    Load(Room("appears-ms = 3600000\n"));
    auto const watcher = MakeWatcher();
    watcher->Start();
    EXPECT_TRUE(WaitIdle());
}

TEST_F(Verbs, LaterFailureLetsThatManyCallsThrough)
{
    auto const create = [] {
        Com<IDeviceWatcher> watcher;
        return Statics()->CreateWatcher(watcher.Put());
    };
    ASSERT_EQ(SimulateLaterFailure("DeviceInformation.CreateWatcher", 2, E_FAIL), 1);
    ASSERT_EQ(SimulateLaterFailure("DeviceInformation.CreateWatcher", 1, E_ACCESSDENIED), 1);
    std::vector<HRESULT> codes;
    for (int call = 0; call < 6; ++call)
    {
        codes.push_back(create());
    }
    EXPECT_THAT(codes, testing::ElementsAre(S_OK, S_OK, E_FAIL, S_OK, E_ACCESSDENIED, S_OK));
}

TEST_F(Verbs, RefuseRadioStatesThatNoSwitchHasAndTheSwitchOfNoRadio)
{
    EXPECT_EQ(SimulateRadioState(0), 0);
    EXPECT_EQ(SimulateRadioState(4), 0);
    EXPECT_THAT(SimulatorLastError(), HasSubstr("radio state 4"));
    EXPECT_EQ(SimulateRadioState(2), 1);
    EXPECT_EQ(SimulateRadioState(3), 1);
    EXPECT_EQ(SimulateRadioState(1), 1);
    Load("[adapter]\npresent = false");
    EXPECT_EQ(SimulateRadioState(1), 0);
    EXPECT_STREQ(SimulatorLastError(), "there is no adapter");
}

TEST_F(Verbs, SwitchTheRadioOffForStartedWatchers)
{
    auto const watcher = MakeWatcher();
    ASSERT_EQ(watcher->Start(), S_OK);
    EXPECT_TRUE(WaitIdle());
    EXPECT_EQ(SimulateRadioState(2), 1);
    EXPECT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Aborted);
}
