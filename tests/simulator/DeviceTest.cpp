// Device objects: what they tell, and the updates that refresh them.
#include "tests/simulator/Client.h"

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace
{
    // The update that a watcher reports for a change of the speaker.
    Com<IDeviceInformationUpdate> UpdateBy(std::string const& property, std::string const& value,
                                           std::string const& id = speaker)
    {
        auto const watcher = MakeWatcher({}, {property});
        Com<IDeviceInformationUpdate> update;
        HearAll(watcher);
        EventRegistrationToken token{};
        watcher->add_Updated(On<UpdateHandler>([&](IDeviceWatcher*, IDeviceInformationUpdate* got) {
                                 update = Com<IDeviceInformationUpdate>(got);
                                 return S_OK;
                             }).Get(),
                             &token);
        watcher->Start();
        EXPECT_TRUE(WaitIdle());
        EXPECT_EQ(SimulateDeviceChanges(id.c_str(), property.c_str(), value.c_str()), 1);
        EXPECT_TRUE(WaitIdle());
        watcher->remove_Updated(token);
        EXPECT_TRUE(update);
        return update;
    }

    using DeviceObject = SimulatorTest;
} // namespace

TEST_F(DeviceObject, TellsWhatItIs)
{
    auto const device = FindDevice(speaker);
    EXPECT_EQ(IdOf(device.Get()), speaker);
    EXPECT_EQ(NameOf(device), "Kitchen Speaker");
    DeviceInformationKind kind{};
    EXPECT_EQ(device.As<IDeviceInformation2>()->get_Kind(&kind), S_OK);
    EXPECT_EQ(kind, DeviceInformationKind::AssociationEndpoint);
    boolean flag = false;
    EXPECT_EQ(device->get_IsEnabled(&flag), S_OK);
    EXPECT_TRUE(flag);
    EXPECT_EQ(device->get_IsDefault(&flag), S_OK);
    EXPECT_FALSE(flag);
    EXPECT_EQ(ClassNameOf(device.Get()), "Windows.Devices.Enumeration.DeviceInformation");
    EXPECT_TRUE(device.Answers<platform::IAgileObject>());
    EXPECT_TRUE(device.Answers<::IMarshal>());
    EXPECT_TRUE(device.Answers<IWeakReferenceSource>());
}

TEST_F(DeviceObject, RefusesNullResults)
{
    auto const device = FindDevice(speaker);
    EXPECT_EQ(device->get_Id(nullptr), E_POINTER);
    EXPECT_EQ(device->get_Name(nullptr), E_POINTER);
    EXPECT_EQ(device->get_IsEnabled(nullptr), E_POINTER);
    EXPECT_EQ(device->get_IsDefault(nullptr), E_POINTER);
    EXPECT_EQ(device->get_Properties(nullptr), E_POINTER);
    EXPECT_EQ(device->get_EnclosureLocation(nullptr), E_POINTER);
    EXPECT_EQ(device->Update(nullptr), E_POINTER);
    EXPECT_EQ(device.As<IDeviceInformation2>()->get_Kind(nullptr), E_POINTER);
    EXPECT_EQ(device.As<IDeviceInformation2>()->get_Pairing(nullptr), E_POINTER);
}

TEST_F(DeviceObject, HasNoEnclosure)
{
    void* nothing = &nothing;
    EXPECT_EQ(FindDevice(speaker)->get_EnclosureLocation(&nothing), S_OK);
    EXPECT_EQ(nothing, nullptr);
}

TEST_F(DeviceObject, IsASnapshot)
{
    auto const device = FindDevice(speaker);
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"New\"");
    SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "true");
    EXPECT_EQ(NameOf(device), "Kitchen Speaker");
    EXPECT_FALSE(IsPaired(device));
    EXPECT_EQ(NameOf(FindDevice(speaker)), "New");
    EXPECT_TRUE(IsPaired(FindDevice(speaker)));
}

TEST_F(DeviceObject, FollowsAnUpdate)
{
    auto const device = FindDevice(speaker);
    auto const pairing = PairingOf(device);
    EXPECT_EQ(device->Update(UpdateBy("System.ItemNameDisplay", "\"New\"").Get()), S_OK);
    EXPECT_EQ(NameOf(device), "New");
    EXPECT_EQ(device->Update(UpdateBy("System.Devices.Aep.IsPaired", "true").Get()), S_OK);
    EXPECT_TRUE(IsPaired(device));
    boolean flag = false;
    EXPECT_EQ(pairing->get_IsPaired(&flag), S_OK); // the pairing object follows its device
    EXPECT_TRUE(flag);
    EXPECT_EQ(device->Update(UpdateBy("System.Devices.Aep.CanPair", "false").Get()), S_OK);
    EXPECT_EQ(pairing->get_CanPair(&flag), S_OK);
    EXPECT_FALSE(flag);
    EXPECT_EQ(device->Update(UpdateBy("System.Devices.Aep.SignalStrength", "-5").Get()), S_OK);
    auto const keys = KeysOf(device.Get());
    EXPECT_THAT(keys, Contains("System.Devices.Aep.SignalStrength"));
    EXPECT_THAT(keys, Not(Contains("System.Devices.Aep.IsConnected"))) << "which nobody has asked for";
}

TEST_F(DeviceObject, RefusesTheUpdateOfAnother)
{
    auto const device = FindDevice(speaker);
    auto const update = UpdateBy("System.ItemNameDisplay", "\"Rat\"", mouse);
    EXPECT_EQ(device->Update(update.Get()), E_INVALIDARG);
    EXPECT_EQ(NameOf(device), "Kitchen Speaker");
}

TEST_F(DeviceObject, UpdateTellsWhatItIs)
{
    auto const update = UpdateBy("System.ItemNameDisplay", "\"New\"");
    EXPECT_EQ(IdOf(update.Get()), speaker);
    EXPECT_THAT(KeysOf(update.Get()), ElementsAre("System.ItemNameDisplay"));
    DeviceInformationKind kind{};
    EXPECT_EQ(update.As<IDeviceInformationUpdate2>()->get_Kind(&kind), S_OK);
    EXPECT_EQ(kind, DeviceInformationKind::AssociationEndpoint);
    EXPECT_EQ(ClassNameOf(update.Get()), "Windows.Devices.Enumeration.DeviceInformationUpdate");
    EXPECT_EQ(update->get_Id(nullptr), E_POINTER);
    EXPECT_EQ(update->get_Properties(nullptr), E_POINTER);
}

TEST_F(DeviceObject, KeepsOnePairingObject)
{
    auto const device = FindDevice(speaker);
    EXPECT_EQ(PairingOf(device).Get(), PairingOf(device).Get());
    EXPECT_EQ(CustomOf(device).Get(), CustomOf(device).Get());
    EXPECT_EQ(ClassNameOf(PairingOf(device).Get()), "Windows.Devices.Enumeration.DeviceInformationPairing");
    EXPECT_EQ(ClassNameOf(CustomOf(device).Get()), "Windows.Devices.Enumeration.DeviceInformationCustomPairing");
}

TEST_F(DeviceObject, ReachesProtectionOnlyWhenPaired)
{
    DevicePairingProtectionLevel level{};
    EXPECT_EQ(PairingOf(FindDevice(speaker)).As<IDeviceInformationPairing2>()->get_ProtectionLevel(&level), S_OK);
    EXPECT_EQ(level, DevicePairingProtectionLevel::None);
    EXPECT_EQ(PairingOf(FindDevice(mouse)).As<IDeviceInformationPairing2>()->get_ProtectionLevel(&level), S_OK);
    EXPECT_EQ(level, DevicePairingProtectionLevel::EncryptionAndAuthentication);
}

TEST_F(DeviceObject, LeavesNothingBehind)
{
    {
        auto const device = FindDevice(speaker);
        KeysOf(device.Get());
        CustomOf(device);
    }
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}
