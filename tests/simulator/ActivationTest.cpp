// Getting the simulated classes from the operating system.
#include "tests/simulator/Client.h"

#include <windows.h>
#include <objbase.h>
#include <roapi.h>

#include <fstream>
#include <thread>

using namespace client;

namespace
{
    HRESULT Activate(char const* className, GUID const& id, void** factory)
    {
        return RoGetActivationFactory(String(className).Get(), id, factory);
    }

    constexpr auto deviceInformation = "Windows.Devices.Enumeration.DeviceInformation";

    HRESULT OnThread(std::function<HRESULT()> const& work)
    {
        HRESULT code = E_UNEXPECTED;
        std::thread([&] { code = work(); }).join();
        return code;
    }

    HRESULT ActivateOnce()
    {
        Com<IDeviceInformationStatics> statics;
        return Activate(deviceInformation, iid_of<IDeviceInformationStatics>, reinterpret_cast<void**>(statics.Put()));
    }

    HRESULT WatchOnce()
    {
        Com<IDeviceInformationStatics> statics;
        EXPECT_HRESULT_SUCCEEDED(
            Activate(deviceInformation, iid_of<IDeviceInformationStatics>, reinterpret_cast<void**>(statics.Put())));
        Com<IDeviceWatcher> watcher;
        return statics->CreateWatcher(watcher.Put());
    }

    struct Activation : testing::Test
    {
    };

    struct SlowActivation : testing::Test
    {
    };

    class ActivatedTest : public SimulatorTest
    {
    };
} // namespace

TEST_F(ActivatedTest, ComesFromTheSimulator)
{
    SimulatorClearTrace();
    ASSERT_HRESULT_SUCCEEDED(ActivateOnce());
    EXPECT_THAT(TraceLines("DeviceInformation.GetActivationFactory()"), testing::SizeIs(1));
    HMODULE module = nullptr;
    ASSERT_TRUE(
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           *reinterpret_cast<LPCWSTR*>(*reinterpret_cast<void**>(Statics().Get())), &module));
    EXPECT_EQ(module, GetModuleHandleW(L"vorlink_simulator.dll"));
}

TEST_F(ActivatedTest, FactoryHasOneIdentityAndIsNotAgile)
{
    auto const statics = Statics();
    auto const other = statics.As<IDeviceInformationStatics2>();
    EXPECT_EQ(static_cast<void*>(statics.As<::IInspectable>().Get()), other.As<::IInspectable>().Get());
    EXPECT_EQ(static_cast<void*>(statics.As<::IUnknown>().Get()), other.As<::IUnknown>().Get());
    EXPECT_TRUE(statics.Answers<::IActivationFactory>());
    EXPECT_FALSE(statics.Answers<platform::IAgileObject>());
    EXPECT_FALSE(statics.Answers<::IMarshal>());
    EXPECT_FALSE(statics.Answers<IWeakReferenceSource>());
}

TEST_F(ActivatedTest, FactoryHasNoRuntimeClassNameAndMakesNoInstance)
{
    auto const factory = Statics().As<::IActivationFactory>();
    String name;
    EXPECT_EQ(factory->GetRuntimeClassName(name.Put()), illegalMethodCall);
    Com<::IInspectable> instance;
    EXPECT_EQ(factory->ActivateInstance(instance.Put()), E_NOTIMPL);
    EXPECT_EQ(factory->ActivateInstance(nullptr), E_POINTER);
}

TEST_F(ActivatedTest, LastReferenceToAFactoryIsTheCallers)
{
    auto const before = SimulatorLiveObjects();
    IDeviceInformationStatics* factory = nullptr;
    ASSERT_HRESULT_SUCCEEDED(
        Activate(deviceInformation, iid_of<IDeviceInformationStatics>, reinterpret_cast<void**>(&factory)));
    EXPECT_EQ(SimulatorLiveObjects(), before + 1);
    EXPECT_EQ(factory->Release(), 0u);
    EXPECT_EQ(SimulatorLiveObjects(), before);
}

TEST_F(ActivatedTest, ModuleKnowsNoOtherClass)
{
    using Entry = HRESULT(WINAPI*)(HSTRING, ::IActivationFactory**);
    auto const module = GetModuleHandleW(L"vorlink_simulator.dll");
    auto const entry =
        reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetActivationFactory")));
    ASSERT_TRUE(entry);
    Com<::IActivationFactory> factory;
    EXPECT_EQ(entry(String("Windows.Devices.Enumeration.DeviceWatcher").Get(), factory.Put()), Code(0x80040111UL));
    EXPECT_EQ(entry(nullptr, factory.Put()), Code(0x80040111UL));
    EXPECT_EQ(entry(String(deviceInformation).Get(), nullptr), E_INVALIDARG);
}

TEST_F(ActivatedTest, ModuleMayUnloadOnlyWithoutLiveObjects)
{
    using Entry = HRESULT(WINAPI*)();
    auto const module = GetModuleHandleW(L"vorlink_simulator.dll");
    auto const entry = reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry(), S_OK);
    {
        auto const watcher = MakeWatcher();
        EXPECT_EQ(entry(), S_FALSE);
    }
    EXPECT_EQ(entry(), S_OK);
}

TEST_F(ActivatedTest, PairingStaticsRegisterNothing)
{
    Com<IDeviceInformationPairingStatics> statics;
    ASSERT_HRESULT_SUCCEEDED(Activate("Windows.Devices.Enumeration.DeviceInformationPairing",
                                      iid_of<IDeviceInformationPairingStatics>,
                                      reinterpret_cast<void**>(statics.Put())));
    boolean registered = true;
    EXPECT_HRESULT_SUCCEEDED(
        statics->TryRegisterForAllInboundPairingRequests(DevicePairingKinds::ConfirmOnly, &registered));
    EXPECT_FALSE(registered);
    registered = true;
    EXPECT_HRESULT_SUCCEEDED(
        statics.As<IDeviceInformationPairingStatics2>()->TryRegisterForAllInboundPairingRequestsWithProtectionLevel(
            DevicePairingKinds::ConfirmOnly, DevicePairingProtectionLevel::None, &registered));
    EXPECT_FALSE(registered);
}

TEST_F(ActivatedTest, StaticsThatAreLeftOutSaySo)
{
    auto const statics = Statics();
    auto const statics2 = Statics2();
    void* operation = &operation;
    EXPECT_EQ(statics->FindAllAsync(&operation), E_NOTIMPL);
    EXPECT_EQ(operation, nullptr);
    EXPECT_EQ(statics->FindAllAsyncDeviceClass(0, &operation), E_NOTIMPL);
    EXPECT_EQ(statics->FindAllAsyncAqsFilter(nullptr, &operation), E_NOTIMPL);
    EXPECT_EQ(statics->FindAllAsyncAqsFilterAndAdditionalProperties(nullptr, nullptr, &operation), E_NOTIMPL);
    EXPECT_EQ(statics->CreateFromIdAsync(nullptr, &operation), E_NOTIMPL);
    EXPECT_EQ(statics->CreateFromIdAsyncAdditionalProperties(nullptr, nullptr, &operation), E_NOTIMPL);
    EXPECT_EQ(statics2->CreateFromIdAsyncWithKindAndAdditionalProperties(
                  nullptr, nullptr, DeviceInformationKind::AssociationEndpoint, &operation),
              E_NOTIMPL);
    EXPECT_EQ(statics2->FindAllAsyncWithKindAqsFilterAndAdditionalProperties(
                  nullptr, nullptr, DeviceInformationKind::AssociationEndpoint, &operation),
              E_NOTIMPL);
    String filter;
    EXPECT_EQ(statics2->GetAqsFilterFromDeviceClass(0, filter.Put()), E_NOTIMPL);
}

TEST_F(Activation, FailsOnAThreadWithoutAnyApartment)
{
    EXPECT_EQ(OnThread(ActivateOnce), notInitialized);
}

TEST_F(Activation, SucceedsOnceTheImplicitApartmentIsThere)
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
TEST_F(SlowActivation, SucceedsInASingleThreadedApartment)
{
    EXPECT_EQ(OnThread([] {
                  EXPECT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_SINGLETHREADED));
                  HRESULT const code = ActivateOnce();
                  RoUninitialize();
                  return code;
              }),
              S_OK);
}

TEST_F(Activation, MakesNoWatcherOfAFaultyScenarioFileAndSaysWhere)
{
    std::ofstream("faulty.toml") << "[[device]]\naddress = 12\n";
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", L"faulty.toml");
    ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_MULTITHREADED));
    testing::internal::CaptureStderr();
    SimulatorReset();
    EXPECT_EQ(WatchOnce(), E_INVALIDARG);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("simulator: faulty.toml:2: "));
    EXPECT_EQ(SimulateScenario(Room().c_str()), 1);
    EXPECT_EQ(WatchOnce(), S_OK);
    SimulatorReset();
    EXPECT_EQ(WatchOnce(), E_INVALIDARG);
}

TEST_F(Activation, MakesNoWatcherOfAMissingScenarioFile)
{
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", L"nowhere.toml");
    ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_MULTITHREADED));
    EXPECT_EQ(WatchOnce(), E_INVALIDARG);
}

TEST_F(Activation, PlaysTheScenarioFile)
{
    std::ofstream("room.toml") << "enumeration-completes-ms = 0\n[[device]]\nname = \"Zo\xC3\xAB\"\n"
                                  "address = \"a4:c1:38:5e:22:0f\"\n";
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", L"room.toml");
    ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_MULTITHREADED));
    EXPECT_EQ(NameOf(FindDevice(speaker)), "Zo\xC3\xAB");
}

TEST_F(Activation, PlaysTheDefaultScenarioOtherwise)
{
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", nullptr);
    ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_MULTITHREADED));
    auto const watcher = MakeWatcher();
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([](IDeviceWatcher*, IDeviceInformation*) { return S_OK; }).Get(), &token);
    ASSERT_HRESULT_SUCCEEDED(watcher->Start());
    EXPECT_EQ(SimulatorWaitForTrace("! DeviceWatcher.Added(#1, ", 3, patience), 1);
}
