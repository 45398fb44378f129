// The factories of the simulated classes, and the module that they come from.
#include "tests/simulator/Client.h"

#include <windows.h>
#include <roapi.h>

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

TEST_F(Factory, OfAClassThatIsLeftOutIsRefusedByName)
{
    constexpr char const* classes[] = {
        "Windows.Devices.Bluetooth.Advertisement.BluetoothLEAdvertisementPublisher",
        "Windows.Devices.Bluetooth.Advertisement.BluetoothLEAdvertisementWatcher",
        "Windows.Devices.Bluetooth.GenericAttributeProfile.GattCharacteristic",
        "Windows.Devices.Bluetooth.GenericAttributeProfile.GattDeviceService",
        "Windows.Devices.Bluetooth.GenericAttributeProfile.GattServiceProvider",
        "Windows.Devices.Bluetooth.GenericAttributeProfile.GattSession",
        "Windows.Devices.Bluetooth.Rfcomm.RfcommDeviceService",
        "Windows.Devices.Bluetooth.Rfcomm.RfcommServiceId",
        "Windows.Devices.Bluetooth.Rfcomm.RfcommServiceProvider",
        "Windows.Devices.Enumeration.DeviceAccessInformation",
        "Windows.Devices.Enumeration.DevicePicker",
    };
    for (std::string const name : classes)
    {
        SimulatorClearTrace();
        Com<::IActivationFactory> factory;
        EXPECT_EQ(Activate(name.c_str(), iid_of<::IActivationFactory>, reinterpret_cast<void**>(factory.Put())),
                  E_NOTIMPL)
            << name;
        EXPECT_THAT(TraceWith(name.substr(name.rfind('.') + 1) + ".GetActivationFactory() -> 0x80004001"), SizeIs(1));
        Com<::IInspectable> instance;
        EXPECT_EQ(RoActivateInstance(String(name).Get(), instance.Put()), E_NOTIMPL) << name;
    }
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

TEST_F(Factory, HasAFilterForEachClassOfDevices)
{
    auto const filterOf = [](INT32 deviceClass) {
        String filter;
        EXPECT_EQ(Statics2()->GetAqsFilterFromDeviceClass(deviceClass, filter.Put()), S_OK);
        return filter.Utf8();
    };
    EXPECT_EQ(filterOf(0), "");
    constexpr char const* classes[] = {
        "{2EEF81BE-33FA-4800-9670-1CD474972C3F}", "{E6327CAD-DCEC-4949-AE8A-991E976A79D2}",
        "{6AC27878-A6FA-4155-BA85-F98F491D4F33}", "{E5323777-F976-4F5B-9B55-B94699C46E44}",
        "{6BDD1FC6-810F-11D0-BEC7-08002BE2092F}", "{BFA794E4-F964-4FDB-90F6-51056BFE4B44}",
    };
    for (INT32 deviceClass = 1; deviceClass <= 6; ++deviceClass)
    {
        EXPECT_EQ(filterOf(deviceClass),
                  "System.Devices.InterfaceClassGuid:=\"" + std::string(classes[deviceClass - 1]) +
                      "\" AND System.Devices.InterfaceEnabled:=System.StructuredQueryType.Boolean#True");
    }
    EXPECT_EQ(Statics2()->GetAqsFilterFromDeviceClass(0, nullptr), E_POINTER);
}

TEST_F(Factory, FindsNoBluetoothDevicesInOtherClasses)
{
    Com<DevicesOperation> operation;
    EXPECT_EQ(Statics()->FindAllAsyncDeviceClass(1, operation.Put()), S_OK);
    EXPECT_THAT(IdsOf(operation), SizeIs(0));
    EXPECT_EQ(Statics()->FindAllAsyncDeviceClass(0, operation.Put()), S_OK);
    EXPECT_THAT(IdsOf(operation), SizeIs(1)); // the paired one
    Com<IDeviceWatcher> watcher;
    EXPECT_EQ(Statics()->CreateWatcherDeviceClass(2, watcher.Put()), S_OK);
}

TEST_F(Factory, RefusesClassesThatDoNotExist)
{
    for (INT32 const deviceClass : {-1, 7})
    {
        Com<DevicesOperation> operation;
        Com<IDeviceWatcher> watcher;
        String filter;
        EXPECT_EQ(Statics2()->GetAqsFilterFromDeviceClass(deviceClass, filter.Put()), E_INVALIDARG);
        EXPECT_EQ(Statics()->FindAllAsyncDeviceClass(deviceClass, operation.Put()), E_INVALIDARG);
        EXPECT_EQ(Statics()->CreateWatcherDeviceClass(deviceClass, watcher.Put()), E_INVALIDARG);
    }
}
