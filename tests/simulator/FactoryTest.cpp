// The factories of the simulated classes, and the module that they come from.
#include "tests/simulator/Client.h"

#include <windows.h>

using namespace test;
using testing::SizeIs;

namespace
{
    using Factory = SimulatorTest;
} // namespace

TEST_F(Factory, ComesFromTheSimulator)
{
    SimulatorClearTrace();
    ASSERT_HRESULT_SUCCEEDED(ActivateOnce());
    EXPECT_THAT(TraceWith("DeviceInformation.GetActivationFactory()"), SizeIs(1));
    HMODULE module = nullptr;
    ASSERT_TRUE(
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           *reinterpret_cast<LPCWSTR*>(*reinterpret_cast<void**>(Statics().Get())), &module));
    EXPECT_EQ(module, GetModuleHandleW(L"vorlink_simulator.dll"));
}

TEST_F(Factory, HasOneIdentityAndIsNotAgile)
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

TEST_F(Factory, HasNoRuntimeClassNameAndMakesNoInstance)
{
    auto const factory = Statics().As<::IActivationFactory>();
    String name;
    EXPECT_EQ(factory->GetRuntimeClassName(name.Put()), illegalMethodCall);
    Com<::IInspectable> instance;
    EXPECT_EQ(factory->ActivateInstance(instance.Put()), E_NOTIMPL);
    EXPECT_EQ(factory->ActivateInstance(nullptr), E_POINTER);
}

TEST_F(Factory, LastReferenceIsTheCallers)
{
    auto const before = SimulatorLiveObjects();
    IDeviceInformationStatics* factory = nullptr;
    ASSERT_HRESULT_SUCCEEDED(
        Activate(deviceInformation, iid_of<IDeviceInformationStatics>, reinterpret_cast<void**>(&factory)));
    EXPECT_EQ(SimulatorLiveObjects(), before + 1);
    EXPECT_EQ(factory->Release(), 0u);
    EXPECT_EQ(SimulatorLiveObjects(), before);
}

TEST_F(Factory, OfAnotherClassIsUnknownToTheModule)
{
    using Entry = HRESULT(WINAPI*)(HSTRING, ::IActivationFactory**);
    auto const module = GetModuleHandleW(L"vorlink_simulator.dll");
    auto const entry =
        reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetActivationFactory")));
    ASSERT_TRUE(entry);
    Com<::IActivationFactory> factory;
    EXPECT_EQ(entry(String("Windows.Devices.Enumeration.DeviceWatcher").Get(), factory.Put()), Code(0x80040111));
    EXPECT_EQ(entry(nullptr, factory.Put()), Code(0x80040111));
    EXPECT_EQ(entry(String(deviceInformation).Get(), nullptr), E_INVALIDARG);
}

TEST_F(Factory, ModuleUnloadsOnlyWithoutLiveObjects)
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

TEST_F(Factory, OfPairingRegistersNothing)
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

TEST_F(Factory, SaysWhatIsLeftOut)
{
    String filter;
    EXPECT_EQ(Statics2()->GetAqsFilterFromDeviceClass(0, filter.Put()), E_NOTIMPL);
}
