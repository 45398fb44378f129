// Failing any call on demand.
#include "tests/simulator/CeremonyClient.h"

#include <functional>

using namespace test;
using testing::HasSubstr;

namespace
{
    using Failures = SimulatorTest;
} // namespace

TEST_F(Failures, QueueUpAndDoNothingElse)
{
    auto const watcher = MakeWatcher();
    EXPECT_EQ(SimulateFailure("DeviceWatcher.Start", E_ACCESSDENIED), 1);
    EXPECT_EQ(SimulateFailure("DeviceWatcher.Start", E_FAIL), 1);
    EXPECT_EQ(watcher->Start(), E_ACCESSDENIED);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Created);
    EXPECT_EQ(watcher->Start(), E_FAIL);
    EXPECT_EQ(watcher->Start(), S_OK);
    EXPECT_EQ(TraceWith("DeviceWatcher.Start(#1) -> 0x80070005").size(), 1u);
}

TEST_F(Failures, MayBeOfAnyMethod)
{
    auto const device = FindDevice(speaker);
    auto const pairing = PairingOf(device);
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
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
             Case{"DeviceInformation.GetActivationFactory", [&] { return ActivateOnce(); }},
         })
    {
        EXPECT_EQ(SimulateFailure(method, Code(0x80041234)), 1);
        EXPECT_EQ(call(), Code(0x80041234)) << method;
    }
}

TEST_F(Failures, OfMethodsThatDoNotExistAreRefused)
{
    EXPECT_EQ(SimulateFailure("DeviceWatcher.start", E_FAIL), 0);
    EXPECT_THAT(SimulatorLastError(), HasSubstr("DeviceWatcher.start"));
    EXPECT_EQ(SimulateFailure(nullptr, E_FAIL), 0);
}
