// The trace's text, and failing any call on demand.
#include "tests/simulator/CeremonyClient.h"

#include <windows.h>
#include <roapi.h>

using namespace client;
using testing::ElementsAre;

namespace
{
    class TraceTest : public SimulatorTest
    {
    protected:
        void SetUp() override
        {
            SimulatorTest::SetUp();
            SimulatorClearTrace();
        }

        static std::vector<std::string> Lines()
        {
            std::vector<std::string> lines;
            for (auto const& line : TraceLines(""))
            {
                lines.push_back(WithoutThread(line));
            }
            return lines;
        }

        static HRESULT Activate()
        {
            Com<IDeviceInformationStatics> statics;
            return RoGetActivationFactory(String("Windows.Devices.Enumeration.DeviceInformation").Get(),
                                          iid_of<IDeviceInformationStatics>, reinterpret_cast<void**>(statics.Put()));
        }

        static std::string With(std::string const& before, std::string const& after)
        {
            return before + speaker + after;
        }
    };
} // namespace

TEST_F(TraceTest, ShowsHowAWatcherIsMade)
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
    EXPECT_THAT(TraceLines("CreateWatcher"),
                ElementsAre(testing::EndsWith(std::string(" DeviceInformation."
                                                          "CreateWatcherWithKindAqsFilterAndAdditionalProperties(\"") +
                                              filter +
                                              "\", [\"System.Devices.Aep.DeviceAddress\", "
                                              "\"System.Devices.Aep.IsConnected\"], AssociationEndpoint) -> #1"),
                            testing::EndsWith("(\"((\", [], AssociationEndpoint) -> 0x80070057"),
                            testing::EndsWith("(\"\", null, DeviceInterface) -> #2")));
}

TEST_F(TraceTest, BeginsALineWithTheThread)
{
    Statics();
    EXPECT_THAT(TraceLines("").front(), testing::StartsWith(std::to_string(GetCurrentThreadId()) + " DeviceInf"));
}

TEST_F(TraceTest, ShowsAWatchersLife)
{
    auto const watcher = MakeWatcher("System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#False");
    SimulatorClearTrace();
    EventRegistrationToken added{};
    EventRegistrationToken updated{};
    EventRegistrationToken completed{};
    watcher->add_Added(On<AddedHandler>([](auto*, auto*) { return S_OK; }).Get(), &added);
    watcher->add_Updated(On<UpdateHandler>([](auto*, auto*) { return S_OK; }).Get(), &updated);
    watcher->add_EnumerationCompleted(On<WatcherHandler>([](auto*, auto*) { return E_FAIL; }).Get(), &completed);
    watcher->Start();
    WaitIdle();
    watcher->Start();
    StatusOf(watcher);
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"Headset\"");
    WaitIdle();
    watcher->remove_Added(added);
    watcher->Stop();
    EXPECT_THAT(Lines(), ElementsAre("DeviceWatcher.add_Added(#1) -> " + std::to_string(added.value),
                                     "DeviceWatcher.add_Updated(#1) -> " + std::to_string(updated.value),
                                     "DeviceWatcher.add_EnumerationCompleted(#1) -> " + std::to_string(completed.value),
                                     "DeviceWatcher.Start(#1)", With("! DeviceWatcher.Added(#1, ", ")"),
                                     "! DeviceWatcher.EnumerationCompleted(#1)",
                                     "! DeviceWatcher.EnumerationCompleted(#1) -> 0x80004005",
                                     "DeviceWatcher.Start(#1) -> 0x8000000E",
                                     "DeviceWatcher.get_Status(#1) -> EnumerationCompleted",
                                     With("! DeviceWatcher.Updated(#1, ", ", [System.ItemNameDisplay])"),
                                     "DeviceWatcher.remove_Added(#1, " + std::to_string(added.value) + ")",
                                     "DeviceWatcher.Stop(#1)"));
}

TEST_F(TraceTest, ShowsAPairing)
{
    Play(Room("[device.pairing]\nduration-ms = 0\n"));
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
    EXPECT_THAT(Lines(), ElementsAre(With("DeviceInformation.get_Name(", ") -> \"Kitchen Speaker\""),
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

TEST_F(TraceTest, ShowsAnUpdate)
{
    auto const device = FindDevice(speaker);
    auto const watcher = MakeWatcher();
    EventRegistrationToken token{};
    watcher->add_Updated(On<UpdateHandler>([&](auto*, IDeviceInformationUpdate* update) {
                             IdOf(update);
                             return device->Update(update);
                         }).Get(),
                         &token);
    watcher->Start();
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"Headset\"");
    WaitIdle();
    ASSERT_EQ(TraceLines(With(" DeviceInformationUpdate.get_Id(", ") -> \"") + speaker + "\"").size(), 1u);
    EXPECT_EQ(TraceLines(With(" DeviceInformation.Update(", ")")).size(), 1u);
}

TEST_F(TraceTest, PrintsNamesVerbatimInUtf8)
{
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"Zo\xC3\xAB's \\\"%n\\\" \xF0\x9F\x93\xB1\"");
    NameOf(FindDevice(speaker));
    EXPECT_EQ(TraceLines("get_Name(").front().substr(TraceLines("get_Name(").front().find("-> ")),
              "-> \"Zo\xC3\xAB's \"%n\" \xF0\x9F\x93\xB1\"");
}

TEST_F(TraceTest, IsCopiedAsFarAsThereIsRoom)
{
    Statics();
    auto const needed = SimulatorTrace(nullptr, 0);
    char buffer[6];
    EXPECT_EQ(SimulatorTrace(buffer, sizeof buffer), needed);
    EXPECT_EQ(std::string(buffer), Trace().substr(0, 5));
    EXPECT_EQ(Trace().size() + 1, needed);
    EXPECT_EQ(Trace().back(), '\n');
    SimulatorClearTrace();
    EXPECT_EQ(SimulatorTrace(buffer, sizeof buffer), 1u);
    EXPECT_EQ(std::string(buffer), "");
}

TEST_F(TraceTest, CanBeWaitedFor)
{
    EXPECT_EQ(SimulatorWaitForTrace("GetActivationFactory", 1, 0), 0);
    EXPECT_STRNE(SimulatorLastError(), "");
    Statics();
    EXPECT_EQ(SimulatorWaitForTrace("GetActivationFactory", 1, 0), 1);
    EXPECT_EQ(SimulatorWaitForTrace("GetActivationFactory", 2, 1), 0);
    EXPECT_EQ(SimulatorWaitForTrace(nullptr, 1, 0), 0);
}

TEST_F(TraceTest, FailuresQueueUpAndDoNothingElse)
{
    auto const watcher = MakeWatcher();
    EXPECT_EQ(SimulateFailure("DeviceWatcher.Start", E_ACCESSDENIED), 1);
    EXPECT_EQ(SimulateFailure("DeviceWatcher.Start", E_FAIL), 1);
    EXPECT_EQ(watcher->Start(), E_ACCESSDENIED);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Created);
    EXPECT_EQ(watcher->Start(), E_FAIL);
    EXPECT_EQ(watcher->Start(), S_OK);
    EXPECT_EQ(TraceLines("DeviceWatcher.Start(#1) -> 0x80070005").size(), 1u);
}

TEST_F(TraceTest, AnyMethodMayFail)
{
    auto const device = FindDevice(speaker);
    auto const pairing = PairingOf(device);
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    WaitIdle();
    auto const watcher = MakeWatcher();
    auto const statics = Statics();
    EventRegistrationToken token{};
    auto const handler = On<AddedHandler>([](auto*, auto*) { return S_OK; });
    boolean flag = false;
    struct Case
    {
        char const* method;
        std::function<HRESULT()> call;
    };
    String text;
    Com<IDeviceWatcher> other;
    Com<PropertyMap> map;
    Com<IDeviceInformationCustomPairing> custom;
    Com<PairingOperation> second;
    Com<IDevicePairingResult> result;
    AsyncStatus status{};
    for (auto const& [method, call] : {
             Case{"DeviceInformation.CreateWatcher", [&] { return statics->CreateWatcher(other.Put()); }},
             Case{"DeviceInformation.get_Name", [&] { return device->get_Name(text.Put()); }},
             Case{"DeviceInformation.get_Properties", [&] { return device->get_Properties(map.Put()); }},
             Case{"DeviceInformationPairing.get_IsPaired", [&] { return pairing->get_IsPaired(&flag); }},
             Case{"DeviceInformationPairing.get_Custom",
                  [&] { return pairing.As<IDeviceInformationPairing2>()->get_Custom(custom.Put()); }},
             Case{"DeviceInformationCustomPairing.PairAsync",
                  [&] { return pairer.custom->PairAsync(anyKind, second.Put()); }},
             Case{"DeviceWatcher.add_Added", [&] { return watcher->add_Added(handler.Get(), &token); }},
             Case{"DeviceWatcher.remove_Added", [&] { return watcher->remove_Added({1}); }},
             Case{"AsyncOperation.GetResults", [&] { return operation->GetResults(result.Put()); }},
             Case{"AsyncOperation.get_Status", [&] { return operation.As<IAsyncInfo>()->get_Status(&status); }},
             Case{"DeviceInformation.GetActivationFactory", [&] { return Activate(); }},
         })
    {
        EXPECT_EQ(SimulateFailure(method, Code(0x80041234UL)), 1);
        EXPECT_EQ(call(), Code(0x80041234UL)) << method;
    }
}

TEST_F(TraceTest, OnlyMethodsThatExistCanFail)
{
    EXPECT_EQ(SimulateFailure("DeviceWatcher.start", E_FAIL), 0);
    EXPECT_THAT(SimulatorLastError(), testing::HasSubstr("DeviceWatcher.start"));
    EXPECT_EQ(SimulateFailure(nullptr, E_FAIL), 0);
}
