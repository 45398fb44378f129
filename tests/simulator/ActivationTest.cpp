// Getting the simulated classes from the operating system.
#include "tests/simulator/Client.h"

#include <windows.h>
#include <objbase.h>
#include <roapi.h>

#include <fstream>
#include <thread>

using namespace test;
using testing::HasSubstr;

namespace
{
    HRESULT OnThread(std::function<HRESULT()> const& work)
    {
        HRESULT code = E_UNEXPECTED;
        std::thread([&] { code = work(); }).join();
        return code;
    }

    HRESULT WatchOnce()
    {
        Com<IDeviceInformationStatics> statics;
        EXPECT_HRESULT_SUCCEEDED(
            Activate(deviceInformation, iid_of<IDeviceInformationStatics>, reinterpret_cast<void**>(statics.Put())));
        Com<IDeviceWatcher> watcher;
        return statics->CreateWatcher(watcher.Put());
    }
} // namespace

TEST(Activation, FailsOnAThreadWithoutAnyApartment)
{
    EXPECT_EQ(OnThread(ActivateOnce), notInitialized);
}

TEST(Activation, SucceedsOnceTheImplicitApartmentIsThere)
{
    EXPECT_EQ(OnThread([] {
                  CO_MTA_USAGE_COOKIE cookie{};
                  EXPECT_HRESULT_SUCCEEDED(CoIncrementMTAUsage(&cookie));
                  HRESULT const code = ActivateOnce();
                  EXPECT_HRESULT_SUCCEEDED(CoDecrementMTAUsage(cookie));
                  return code;
              }),
              S_OK);
}

// Wine starts its desktop for a single-threaded apartment, which takes seconds.
TEST(SlowActivation, SucceedsInASingleThreadedApartment)
{
    EXPECT_EQ(OnThread([] {
                  EXPECT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_SINGLETHREADED));
                  HRESULT const code = ActivateOnce();
                  RoUninitialize();
                  return code;
              }),
              S_OK);
}

TEST(Activation, MakesNoWatcherOfAFaultyScenarioFileAndTellsItsFaults)
{
    std::ofstream("faulty.toml") << "[[device]]\naddress = 12\nadress = 1\n";
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", L"faulty.toml");
    ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_MULTITHREADED));
    testing::internal::CaptureStderr();
    SimulatorReset();
    EXPECT_EQ(WatchOnce(), E_INVALIDARG);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), AllOf(HasSubstr("simulator: faulty.toml:2: 'address': 12"),
                                                              HasSubstr("\nfaulty.toml:3: 'adress': unknown key")));
    EXPECT_EQ(SimulateScenario(Room().c_str()), 1);
    EXPECT_EQ(WatchOnce(), S_OK);
    SimulatorReset();
    EXPECT_EQ(WatchOnce(), E_INVALIDARG);
}

TEST(Activation, MakesNoWatcherOfAMissingScenarioFile)
{
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", L"nowhere.toml");
    ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_MULTITHREADED));
    EXPECT_EQ(WatchOnce(), E_INVALIDARG);
}

TEST(Activation, PlaysTheScenarioFile)
{
    std::ofstream("room.toml") << "enumeration-completes-ms = 0\n[[device]]\nname = \"Zo\xC3\xAB\"\n"
                                  "address = 'a4:c1:38:5e:22:0f'\n";
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", L"room.toml");
    ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_MULTITHREADED));
    EXPECT_EQ(NameOf(FindDevice(speaker)), "Zo\xC3\xAB");
}

TEST(Activation, PlaysTheDefaultScenarioOtherwise)
{
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", nullptr);
    ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_MULTITHREADED));
    auto const watcher = MakeWatcher();
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([](IDeviceWatcher*, IDeviceInformation*) { return S_OK; }).Get(), &token);
    ASSERT_HRESULT_SUCCEEDED(watcher->Start());
    EXPECT_TRUE(WaitForCall("! DeviceWatcher.Added(#1, ", 3));
}
