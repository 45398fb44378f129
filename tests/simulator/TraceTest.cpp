// The trace's text.
#include "tests/simulator/CeremonyClient.h"

#include <windows.h>

using namespace test;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

namespace
{
    class CallTrace : public SimulatorTest
    {
    protected:
        void SetUp() override
        {
            SimulatorTest::SetUp();
            SimulatorClearTrace();
        }

        static std::string With(std::string const& before, std::string const& after)
        {
            return before + speaker + after;
        }
    };
} // namespace

TEST_F(CallTrace, ShowsHowAWatcherIsMade)
{
    Com<IDeviceWatcher> watcher;
    auto const statics = Statics2();
    SimulatorClearTrace();
    auto const* const filter = "System.Devices.Aep.ProtocolId:=\"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}\"";
    ASSERT_EQ(TryMakeWatcher(filter, {"System.Devices.Aep.DeviceAddress", "System.Devices.Aep.IsConnected"}, watcher),
              S_OK);
    TryMakeWatcher("((", {}, watcher);
    statics->CreateWatcherWithKindAqsFilterAndAdditionalProperties(
        nullptr, nullptr, DeviceInformationKind::DeviceInterface, watcher.Put());
    EXPECT_THAT(TraceWith("CreateWatcher"),
                ElementsAre(std::string(createWatcher) + "(\"" + filter +
                                "\", [\"System.Devices.Aep.DeviceAddress\", "
                                "\"System.Devices.Aep.IsConnected\"], AssociationEndpoint) -> #1",
                            EndsWith("(\"((\", [], AssociationEndpoint) -> 0x80070057"),
                            EndsWith("(\"\", null, DeviceInterface) -> #2")));
}

TEST_F(CallTrace, BeginsALineWithTheThread)
{
    Statics();
    EXPECT_THAT(TraceText(), StartsWith(std::to_string(GetCurrentThreadId()) + " DeviceInf"));
}

TEST_F(CallTrace, ShowsAWatchersLife)
{
    auto const watcher = MakeWatcher("System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#False");
    SimulatorClearTrace();
    EventRegistrationToken added{};
    EventRegistrationToken updated{};
    EventRegistrationToken removed{};
    EventRegistrationToken completed{};
    watcher->add_Added(On<AddedHandler>([](auto*, auto*) { return S_OK; }).Get(), &added);
    watcher->add_Updated(On<UpdateHandler>([](auto*, auto*) { return S_OK; }).Get(), &updated);
    watcher->add_Removed(On<UpdateHandler>([](auto*, auto*) { return S_OK; }).Get(), &removed);
    watcher->add_EnumerationCompleted(On<WatcherHandler>([](auto*, auto*) { return E_FAIL; }).Get(), &completed);
    watcher->Start();
    ASSERT_TRUE(WaitIdle());
    watcher->Start();
    StatusOf(watcher);
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"Headset\"");
    ASSERT_TRUE(WaitIdle());
    watcher->remove_Added(added);
    watcher->Stop();
    EXPECT_THAT(
        Trace({""}),
        ElementsAre("DeviceWatcher.add_Added(#1) -> " + std::to_string(added.value),
                    "DeviceWatcher.add_Updated(#1) -> " + std::to_string(updated.value),
                    "DeviceWatcher.add_Removed(#1) -> " + std::to_string(removed.value),
                    "DeviceWatcher.add_EnumerationCompleted(#1) -> " + std::to_string(completed.value),
                    "DeviceWatcher.Start(#1)", With("! DeviceWatcher.Added(#1, ", ")"),
                    "! DeviceWatcher.EnumerationCompleted(#1)",
                    "! DeviceWatcher.EnumerationCompleted(#1) -> 0x80004005", "DeviceWatcher.Start(#1) -> 0x8000000E",
                    "DeviceWatcher.get_Status(#1) -> EnumerationCompleted",
                    With("! DeviceWatcher.Updated(#1, ", ", [System.ItemNameDisplay])"),
                    "DeviceWatcher.remove_Added(#1, " + std::to_string(added.value) + ")", "DeviceWatcher.Stop(#1)"));
}

TEST_F(CallTrace, ShowsAPairing)
{
    LoadPairing("duration-ms = 0");
    Pairer pairer(speaker);
    NameOf(pairer.device);
    IsPaired(pairer.device);
    SimulatorClearTrace();
    NameOf(pairer.device);
    IsPaired(pairer.device);
    auto const operation =
        pairer.Begin(DevicePairingKinds::ConfirmOnly, DevicePairingProtectionLevel::EncryptionAndAuthentication);
    EXPECT_EQ(operation->put_Completed(On<PairingCompletedHandler>([](auto*, auto) { return S_OK; }).Get()), S_OK);
    Pairer::Outcome(operation);
    pairer.Begin(static_cast<DevicePairingKinds>(9));
    EXPECT_THAT(Trace({""}), ElementsAre(With("DeviceInformation.get_Name(", ") -> \"Kitchen Speaker\""),
                                         With("DeviceInformation.get_Pairing(", ")"),
                                         With("DeviceInformationPairing.get_IsPaired(", ") -> false"),
                                         With("DeviceInformationCustomPairing.PairWithProtectionLevelAsync(",
                                              ", ConfirmOnly, EncryptionAndAuthentication)"),
                                         With("! DeviceInformationCustomPairing.PairingRequested(", ", ConfirmOnly)"),
                                         With("DevicePairingRequestedEventArgs.Accept(", ")"),
                                         With("AsyncOperation.put_Completed(", ")"),
                                         With("AsyncOperation.get_Status(", ") -> Completed"),
                                         With("AsyncOperation.GetResults(", ")"),
                                         With("DevicePairingResult.get_Status(", ") -> Paired"),
                                         With("DeviceInformationCustomPairing.PairWithProtectionLevelAsync(",
                                              ", ConfirmOnly|ConfirmPinMatch, Default)")));
}

TEST_F(CallTrace, ShowsAnUpdate)
{
    auto const device = FindDevice(speaker);
    auto const watcher = MakeWatcher();
    HearAll(watcher);
    EventRegistrationToken token{};
    watcher->add_Updated(On<UpdateHandler>([&](auto*, IDeviceInformationUpdate* update) {
                             IdOf(update);
                             return device->Update(update);
                         }).Get(),
                         &token);
    watcher->Start();
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"Headset\"");
    ASSERT_TRUE(WaitIdle());
    ASSERT_EQ(TraceWith(With("DeviceInformationUpdate.get_Id(", ") -> \"") + speaker + "\"").size(), 1u);
    EXPECT_EQ(TraceWith(With("DeviceInformation.Update(", ")")).size(), 1u);
}

TEST_F(CallTrace, PrintsNamesVerbatimInUtf8)
{
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"Zo\xC3\xAB's \\\"%n\\\" \xF0\x9F\x93\xB1\"");
    NameOf(FindDevice(speaker));
    EXPECT_EQ(TraceWith("get_Name(").front().substr(TraceWith("get_Name(").front().find("-> ")),
              "-> \"Zo\xC3\xAB's \"%n\" \xF0\x9F\x93\xB1\"");
}

TEST_F(CallTrace, IsCopiedAsFarAsThereIsRoom)
{
    Statics();
    auto const needed = SimulatorTrace(nullptr, 0);
    char buffer[6];
    EXPECT_EQ(SimulatorTrace(buffer, sizeof buffer), needed);
    EXPECT_EQ(std::string(buffer), TraceText().substr(0, 5));
    EXPECT_EQ(TraceText().size() + 1, needed);
    EXPECT_EQ(TraceText().back(), '\n');
    SimulatorClearTrace();
    EXPECT_EQ(SimulatorTrace(buffer, sizeof buffer), 1u);
    EXPECT_EQ(std::string(buffer), "");
}

TEST_F(CallTrace, CanBeWaitedFor)
{
    EXPECT_EQ(SimulatorWaitForTrace("GetActivationFactory", 1, 0), 0);
    EXPECT_STRNE(SimulatorLastError(), "");
    Statics();
    EXPECT_EQ(SimulatorWaitForTrace("GetActivationFactory", 1, 0), 1);
    EXPECT_EQ(SimulatorWaitForTrace("GetActivationFactory", 2, 1), 0);
    EXPECT_EQ(SimulatorWaitForTrace(nullptr, 1, 0), 0);
}
