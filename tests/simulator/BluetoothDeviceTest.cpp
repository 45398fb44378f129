// Devices as objects of their own: how a program comes by them, what they tell, how they end.
#include "tests/simulator/BluetoothClient.h"

#include <windows.h>

#include <atomic>

using namespace test;

namespace
{
    using BluetoothDevice = SimulatorTest;
    using Classic = platform::IBluetoothDevice;
    using Le = platform::IBluetoothLEDevice;

    constexpr UINT64 speakerAddress = 0xA4C1385E220F;
    constexpr UINT64 mouseAddress = 0xE8473A15B0C2;
    constexpr auto nobody = "Bluetooth#Bluetooth00:1a:7d:da:71:13-00:00:00:00:00:01";
    constexpr auto nameProperty = "System.ItemNameDisplay";
    constexpr auto connectedProperty = "System.Devices.Aep.IsConnected";

    // How often an event has been raised, by the right sender with no argument on a thread of the simulator.
    template <typename Device>
    struct Ear
    {
        std::atomic<int> heard = 0;
        EventRegistrationToken token{};

        auto Handler(Com<Device> const& device)
        {
            return On<TypedEventHandler<Device*, ::IInspectable*>>(
                [this, expected = device.Get(), thread = GetCurrentThreadId()](Device* sender,
                                                                               ::IInspectable* nothing) {
                    EXPECT_EQ(sender, expected);
                    EXPECT_EQ(nothing, nullptr);
                    EXPECT_NE(GetCurrentThreadId(), thread);
                    ++heard;
                    return S_OK;
                });
        }
    };

    void Change(char const* id, char const* property, char const* value)
    {
        EXPECT_EQ(SimulateDeviceChanges(id, property, value), 1) << SimulatorLastError();
        EXPECT_TRUE(WaitIdle());
    }
} // namespace

TEST_F(BluetoothDevice, OfClassicTellsOfItsEndpoint)
{
    auto const device = ClassicDevice(speaker);
    ASSERT_TRUE(device);
    EXPECT_EQ(ClassNameOf(device.Get()), deviceClass);
    EXPECT_TRUE(device.Answers<platform::IAgileObject>());
    EXPECT_EQ(ReadText(device, &Classic::get_DeviceId), speaker);
    EXPECT_EQ(ReadText(device, &Classic::get_Name), "Kitchen Speaker");
    EXPECT_EQ(Read(device, &Classic::get_BluetoothAddress), speakerAddress);
    EXPECT_EQ(Read(device, &Classic::get_ConnectionStatus), BluetoothConnectionStatus::Disconnected);
    Com<IBluetoothDeviceId> deviceId;
    EXPECT_EQ(device.As<IBluetoothDevice4>()->get_BluetoothDeviceId(deviceId.Put()), S_OK);
    EXPECT_EQ(ReadText(deviceId, &IBluetoothDeviceId::get_Id), speaker);
    EXPECT_FALSE(Read(device.As<IBluetoothDevice5>(), &IBluetoothDevice5::get_WasSecureConnectionUsedForPairing));
}

TEST_F(BluetoothDevice, OfLeTellsOfItsEndpoint)
{
    auto const device = LeDevice(mouse);
    ASSERT_TRUE(device);
    EXPECT_EQ(ClassNameOf(device.Get()), leDeviceClass);
    EXPECT_EQ(ReadText(device, &Le::get_DeviceId), mouse);
    EXPECT_EQ(ReadText(device, &Le::get_Name), "Travel Mouse");
    EXPECT_EQ(Read(device, &Le::get_BluetoothAddress), mouseAddress);
    EXPECT_EQ(Read(device, &Le::get_ConnectionStatus), BluetoothConnectionStatus::Disconnected);
    auto const device2 = device.As<IBluetoothLEDevice2>();
    EXPECT_EQ(Read(device2, &IBluetoothLEDevice2::get_BluetoothAddressType), BluetoothAddressType::Public);
    Com<IBluetoothLEAppearance> appearance;
    EXPECT_EQ(device2->get_Appearance(appearance.Put()), S_OK);
    EXPECT_EQ(Read(appearance, &IBluetoothLEAppearance::get_RawValue), 0u);
    EXPECT_EQ(Read(appearance, &IBluetoothLEAppearance::get_Category), 0u);
    EXPECT_EQ(Read(appearance, &IBluetoothLEAppearance::get_SubCategory), 0u);
    EXPECT_TRUE(Read(device.As<IBluetoothLEDevice5>(), &IBluetoothLEDevice5::get_WasSecureConnectionUsedForPairing));
}

TEST_F(BluetoothDevice, OfNoKnownClassIsUncategorised)
{
    Com<IBluetoothClassOfDevice> value;
    ASSERT_EQ(ClassicDevice(speaker)->get_ClassOfDevice(value.Put()), S_OK);
    EXPECT_EQ(Read(value, &IBluetoothClassOfDevice::get_RawValue), 0x1F00u);
}

TEST_F(BluetoothDevice, TellsTheClassOfItsScenario)
{
    Load(Room("class-of-device = 0x240418"));
    Com<IBluetoothClassOfDevice> value;
    ASSERT_EQ(ClassicDevice(speaker)->get_ClassOfDevice(value.Put()), S_OK);
    EXPECT_EQ(Read(value, &IBluetoothClassOfDevice::get_RawValue), 0x240418u);
    EXPECT_EQ(Read(value, &IBluetoothClassOfDevice::get_MajorClass), BluetoothMajorClass::AudioVideo);
    EXPECT_EQ(Read(value, &IBluetoothClassOfDevice::get_MinorClass), 6);
    EXPECT_EQ(Read(value, &IBluetoothClassOfDevice::get_ServiceCapabilities), 0x240418u >> 13);

    // Every bit that stands for something, and the others, which stand for nothing.
    Load(Room("class-of-device = 0xffffff"));
    ASSERT_EQ(ClassicDevice(speaker)->get_ClassOfDevice(value.Put()), S_OK);
    EXPECT_EQ(Read(value, &IBluetoothClassOfDevice::get_RawValue), 0xFF3FFCu);
}

TEST_F(BluetoothDevice, TellsTheAppearanceAndAddressTypeOfItsScenario)
{
    Load(Room({}, "appearance = 962\n[device.properties]\n'System.Devices.Aep.Bluetooth.Le.AddressType' = 1"));
    auto const device = LeDevice(mouse).As<IBluetoothLEDevice2>();
    EXPECT_EQ(Read(device, &IBluetoothLEDevice2::get_BluetoothAddressType), BluetoothAddressType::Random);
    Com<IBluetoothLEAppearance> appearance;
    ASSERT_EQ(device->get_Appearance(appearance.Put()), S_OK);
    EXPECT_EQ(Read(appearance, &IBluetoothLEAppearance::get_RawValue), 962u);
    EXPECT_EQ(Read(appearance, &IBluetoothLEAppearance::get_Category), 15u);
    EXPECT_EQ(Read(appearance, &IBluetoothLEAppearance::get_SubCategory), 2u);
}

TEST_F(BluetoothDevice, LeadsToItsInformation)
{
    Com<platform::IDeviceInformation> information;
    ASSERT_EQ(LeDevice(mouse).As<IBluetoothLEDevice2>()->get_DeviceInformation(information.Put()), S_OK);
    EXPECT_EQ(IdOf(information.Get()), mouse);
    EXPECT_EQ(NameOf(information), "Travel Mouse");
    EXPECT_TRUE(IsPaired(information));
    DeviceInformationKind kind{};
    EXPECT_EQ(information.As<IDeviceInformation2>()->get_Kind(&kind), S_OK);
    EXPECT_EQ(kind, DeviceInformationKind::AssociationEndpoint);
    ASSERT_EQ(ClassicDevice(speaker).As<IBluetoothDevice2>()->get_DeviceInformation(information.Put()), S_OK);
    EXPECT_EQ(IdOf(information.Get()), speaker);
}

TEST_F(BluetoothDevice, IsFoundByItsAddress)
{
    auto const classic = StaticsOf<IBluetoothDeviceStatics>(deviceClass);
    auto const byAddress = [&](UINT64 address) {
        return ObjectOf<Classic>([&](auto** to) { return classic->FromBluetoothAddressAsync(address, to); });
    };
    EXPECT_TRUE(byAddress(speakerAddress));
    EXPECT_FALSE(byAddress(mouseAddress)) << "it has no Classic side";
    Com<IAsyncOperation<Classic*>> operation;
    EXPECT_EQ(classic->FromBluetoothAddressAsync(0x1'0000'0000'0000, operation.Put()), E_INVALIDARG);

    auto const le = StaticsOf<IBluetoothLEDeviceStatics>(leDeviceClass).As<IBluetoothLEDeviceStatics2>();
    auto const byType = [&](BluetoothAddressType type) {
        return ObjectOf<Le>(
            [&](auto** to) { return le->FromBluetoothAddressWithBluetoothAddressTypeAsync(mouseAddress, type, to); });
    };
    EXPECT_TRUE(byType(BluetoothAddressType::Public));
    EXPECT_FALSE(byType(BluetoothAddressType::Random));
    EXPECT_TRUE(byType(BluetoothAddressType::Unspecified));
    Com<IAsyncOperation<Le*>> leOperation;
    EXPECT_EQ(le->FromBluetoothAddressWithBluetoothAddressTypeAsync(mouseAddress, static_cast<BluetoothAddressType>(3),
                                                                    leOperation.Put()),
              E_INVALIDARG);
}

TEST_F(BluetoothDevice, IsNullWhereThereIsNoneOrNoneWasSeen)
{
    EXPECT_FALSE(ClassicDevice(nobody));
    EXPECT_FALSE(LeDevice(lamp)) << "it has never been in range";
    EXPECT_EQ(SimulateDeviceAppears(lamp), 1);
    EXPECT_TRUE(LeDevice(lamp));
    EXPECT_EQ(SimulateDeviceLeaves(lamp), 1);
    EXPECT_TRUE(LeDevice(lamp)) << "the platform remembers it";
    Load(Room({}, {}, "[adapter]\npresent = false"));
    EXPECT_FALSE(ClassicDevice(speaker));
}

TEST_F(BluetoothDevice, IsRefusedByAnIdentifierOfAnotherForm)
{
    auto const classic = StaticsOf<IBluetoothDeviceStatics>(deviceClass);
    Com<IAsyncOperation<Classic*>> operation;
    for (auto const* const id : {"", "x", "a4:c1:38:5e:22:0f", mouse})
    {
        EXPECT_EQ(classic->FromIdAsync(String(id).Get(), operation.Put()), E_INVALIDARG) << id;
        EXPECT_FALSE(operation);
    }
    EXPECT_EQ(classic->FromIdAsync(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(classic->FromIdAsync(String(speaker).Get(), nullptr), E_POINTER);
}

TEST_F(BluetoothDevice, TellsOfItsNameAndConnection)
{
    auto const device = LeDevice(mouse);
    Ear<Le> names;
    Ear<Le> connections;
    ASSERT_EQ(device->add_NameChanged(names.Handler(device).Get(), &names.token), S_OK);
    ASSERT_EQ(device->add_ConnectionStatusChanged(connections.Handler(device).Get(), &connections.token), S_OK);
    EXPECT_EQ(device->add_NameChanged(nullptr, &names.token), E_INVALIDARG);
    Change(mouse, nameProperty, "'Old Mouse'");
    EXPECT_EQ(ReadText(device, &Le::get_Name), "Old Mouse");
    EXPECT_EQ(names.heard, 1);
    EXPECT_EQ(connections.heard, 0);
    Change(mouse, connectedProperty, "true");
    EXPECT_EQ(Read(device, &Le::get_ConnectionStatus), BluetoothConnectionStatus::Connected);
    EXPECT_EQ(connections.heard, 1);
    Change(mouse, connectedProperty, "true");
    EXPECT_EQ(connections.heard, 1) << "nothing has changed";
    EXPECT_EQ(SimulateRadioState(2), 1);
    EXPECT_TRUE(WaitIdle());
    EXPECT_EQ(connections.heard, 2);
    EXPECT_EQ(Read(device, &Le::get_ConnectionStatus), BluetoothConnectionStatus::Disconnected);
    EXPECT_EQ(device->remove_NameChanged(names.token), S_OK);
    Change(mouse, nameProperty, "'Mouse'");
    EXPECT_EQ(names.heard, 1);
}

TEST_F(BluetoothDevice, OfClassicTellsOfItsNameAndConnectionToo)
{
    auto const device = ClassicDevice(speaker);
    Ear<Classic> names;
    Ear<Classic> connections;
    ASSERT_EQ(device->add_NameChanged(names.Handler(device).Get(), &names.token), S_OK);
    ASSERT_EQ(device->add_ConnectionStatusChanged(connections.Handler(device).Get(), &connections.token), S_OK);
    Change(speaker, nameProperty, "'Loud'");
    Change(speaker, connectedProperty, "true");
    EXPECT_EQ(names.heard, 1);
    EXPECT_EQ(connections.heard, 1);
    EXPECT_EQ(device->remove_ConnectionStatusChanged(connections.token), S_OK);
    Change(speaker, connectedProperty, "false");
    EXPECT_EQ(connections.heard, 1);
}

TEST_F(BluetoothDevice, IsSilentOnceClosed)
{
    auto const device = LeDevice(mouse);
    Ear<Le> names;
    ASSERT_EQ(device->add_NameChanged(names.Handler(device).Get(), &names.token), S_OK);
    auto const closable = device.As<IClosable>();
    EXPECT_EQ(closable->Close(), S_OK);
    EXPECT_EQ(closable->Close(), S_OK);
    Change(mouse, nameProperty, "'Old Mouse'");
    EXPECT_EQ(names.heard, 0);
    String text;
    EXPECT_EQ(device->get_Name(text.Put()), objectClosed);
    BluetoothConnectionStatus status{};
    EXPECT_EQ(device->get_ConnectionStatus(&status), objectClosed);
    Com<platform::IDeviceInformation> information;
    EXPECT_EQ(device.As<IBluetoothLEDevice2>()->get_DeviceInformation(information.Put()), objectClosed);
    EXPECT_EQ(device->add_NameChanged(names.Handler(device).Get(), &names.token), objectClosed);
    EXPECT_EQ(device->remove_NameChanged(names.token), S_OK);
}

TEST_F(BluetoothDevice, OutlivesItsNeighbourhood)
{
    Load(Room({}, "[device.properties]\n'System.Devices.Aep.IsConnected' = true"));
    auto const device = LeDevice(mouse);
    EXPECT_EQ(Read(device, &Le::get_ConnectionStatus), BluetoothConnectionStatus::Connected);
    Load("");
    EXPECT_EQ(ReadText(device, &Le::get_Name), "Travel Mouse");
    EXPECT_EQ(Read(device, &Le::get_ConnectionStatus), BluetoothConnectionStatus::Disconnected);
}

TEST_F(BluetoothDevice, LeavesNothingBehind)
{
    auto const before = SimulatorLiveObjects();
    {
        auto const device = LeDevice(mouse);
        Ear<Le> names;
        ASSERT_EQ(device->add_NameChanged(names.Handler(device).Get(), &names.token), S_OK);
        EXPECT_EQ(SimulatorLiveObjects(), before + 4);
    }
    EXPECT_EQ(SimulatorLiveObjects(), before);
}

TEST_F(BluetoothDevice, MayBeAccessed)
{
    auto const device = LeDevice(mouse).As<IBluetoothLEDevice3>();
    EXPECT_EQ(ValueOf<DeviceAccessStatus>([&](auto** to) { return device->RequestAccessAsync(to); }),
              DeviceAccessStatus::Allowed);
    auto const classic = ClassicDevice(speaker).As<IBluetoothDevice3>();
    EXPECT_EQ(ValueOf<DeviceAccessStatus>([&](auto** to) { return classic->RequestAccessAsync(to); }),
              DeviceAccessStatus::Allowed);
}

TEST_F(BluetoothDevice, KeepsOneInformation)
{
    auto const device = LeDevice(mouse).As<IBluetoothLEDevice2>();
    Com<IDeviceInformation> first;
    Com<IDeviceInformation> second;
    ASSERT_EQ(device->get_DeviceInformation(first.Put()), S_OK);
    ASSERT_EQ(device->get_DeviceInformation(second.Put()), S_OK);
    EXPECT_EQ(first.Get(), second.Get()) << "a handler of its pairing is found again";
}

TEST_F(BluetoothDevice, SaysThatItHasNoServices)
{
    auto const device = LeDevice(mouse);
    void* result = &result;
    EXPECT_EQ(device->get_GattServices(&result), E_NOTIMPL);
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(device->GetGattService({}, &result), E_NOTIMPL);
    auto const device3 = device.As<IBluetoothLEDevice3>();
    EXPECT_EQ(device3->GetGattServicesForUuidWithCacheModeAsync({}, 0, &result), E_NOTIMPL);
    EXPECT_EQ(device3->GetGattServicesAsync(nullptr), E_POINTER);
    auto const classic = ClassicDevice(speaker);
    EXPECT_EQ(classic->get_HostName(&result), E_NOTIMPL);
    EXPECT_EQ(classic->get_RfcommServices(&result), E_NOTIMPL);
    EXPECT_EQ(classic.As<IBluetoothDevice3>()->GetRfcommServicesForIdAsync(nullptr, &result), E_NOTIMPL);
    Com<IAsyncOperation<Classic*>> operation;
    EXPECT_EQ(StaticsOf<IBluetoothDeviceStatics>(deviceClass)->FromHostNameAsync(nullptr, operation.Put()), E_NOTIMPL);
}
