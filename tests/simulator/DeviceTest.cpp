// Device objects: snapshots with properties, and the updates that refresh them.
#include "tests/simulator/Recorder.h"

using namespace client;
using testing::Contains;

namespace
{
    using Pair = IKeyValuePair<HSTRING, ::IInspectable*>;

    class Device : public SimulatorTest
    {
    protected:
        static Com<PropertyMap> MapOf(Com<IDeviceInformation> const& device)
        {
            Com<PropertyMap> map;
            EXPECT_EQ(device->get_Properties(map.Put()), S_OK);
            return map;
        }

        static Com<IPropertyValue> Lookup(Com<IDeviceInformation> const& device, std::string const& key)
        {
            Com<::IInspectable> value;
            EXPECT_EQ(MapOf(device)->Lookup(String(key).Get(), value.Put()), S_OK) << key;
            return value ? value.As<IPropertyValue>() : Com<IPropertyValue>();
        }

        // The update that a watcher reports for a change of the speaker.
        static Com<IDeviceInformationUpdate> UpdateBy(std::string const& property, std::string const& value,
                                                      std::string const& id = speaker)
        {
            auto const watcher = MakeWatcher({}, {property});
            Com<IDeviceInformationUpdate> update;
            EventRegistrationToken token{};
            watcher->add_Updated(On<UpdateHandler>([&](IDeviceWatcher*, IDeviceInformationUpdate* got) {
                                     update = Com<IDeviceInformationUpdate>(got);
                                     return S_OK;
                                 }).Get(),
                                 &token);
            watcher->Start();
            WaitIdle();
            EXPECT_EQ(SimulateDeviceChanges(id.c_str(), property.c_str(), value.c_str()), 1);
            WaitIdle();
            watcher->remove_Updated(token);
            EXPECT_TRUE(update);
            return update;
        }
    };
} // namespace

TEST_F(Device, TellsWhatItIs)
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

TEST_F(Device, RefusesNullResults)
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

TEST_F(Device, HasNoThumbnailsAndNoEnclosure)
{
    auto const device = FindDevice(speaker);
    void* nothing = &nothing;
    EXPECT_EQ(device->GetThumbnailAsync(&nothing), E_NOTIMPL);
    EXPECT_EQ(device->GetGlyphThumbnailAsync(&nothing), E_NOTIMPL);
    nothing = &nothing;
    EXPECT_EQ(device->get_EnclosureLocation(&nothing), S_OK);
    EXPECT_EQ(nothing, nullptr);
}

TEST_F(Device, ShowsThePropertiesOfEveryDeviceAndThoseAskedFor)
{
    auto const keys = KeysOf(FindDevice(speaker, {"System.Devices.Aep.DeviceAddress"}).Get());
    for (auto const* const key :
         {"System.ItemNameDisplay", "System.Devices.DeviceInstanceId", "System.Devices.Icon",
          "System.Devices.GlyphIcon", "System.Devices.InterfaceEnabled", "System.Devices.IsDefault",
          "System.Devices.PhysicalDeviceLocation", "System.Devices.Aep.CanPair", "System.Devices.Aep.IsPaired",
          "{A35996AB-11CF-4935-8B61-A6761081ECDF} 19", "System.Devices.Aep.DeviceAddress"})
    {
        EXPECT_THAT(keys, Contains(key));
    }
    EXPECT_THAT(keys, testing::SizeIs(13));
    EXPECT_THAT(keys, testing::Not(Contains("System.Devices.Aep.IsConnected"))); // nobody asked
}

TEST_F(Device, HasNullForWhatDoesNotApply)
{
    auto const device = FindDevice(speaker, {"System.Devices.InterfaceClassGuid"});
    EXPECT_FALSE(Lookup(device, "System.Devices.InterfaceClassGuid"));
    EXPECT_FALSE(Lookup(device, "System.Devices.DeviceInstanceId"));
}

TEST_F(Device, BoxesValuesByTheirType)
{
    auto const device = FindDevice(speaker, {"System.Devices.Aep.DeviceAddress", "System.Devices.Aep.SignalStrength",
                                             "System.Devices.Aep.ProtocolId"});
    PropertyType type{};

    auto const text = Lookup(device, "System.Devices.Aep.DeviceAddress");
    String address;
    EXPECT_EQ(text->get_Type(&type), S_OK);
    EXPECT_EQ(type, PropertyType::String);
    EXPECT_EQ(text->GetString(address.Put()), S_OK);
    EXPECT_EQ(address.Utf8(), "a4:c1:38:5e:22:0f");
    EXPECT_EQ(ClassNameOf(text.Get()), "Windows.Foundation.IReference`1<String>");

    auto const flag = Lookup(device, "System.Devices.Aep.CanPair");
    boolean canPair = false;
    EXPECT_EQ(flag->get_Type(&type), S_OK);
    EXPECT_EQ(type, PropertyType::Boolean);
    EXPECT_EQ(flag->GetBoolean(&canPair), S_OK);
    EXPECT_TRUE(canPair);

    auto const number = Lookup(device, "System.Devices.Aep.SignalStrength");
    INT32 strength = 0;
    boolean numeric = false;
    EXPECT_EQ(number->get_Type(&type), S_OK);
    EXPECT_EQ(type, PropertyType::Int32);
    EXPECT_EQ(number->get_IsNumericScalar(&numeric), S_OK);
    EXPECT_TRUE(numeric);
    EXPECT_EQ(number->GetInt32(&strength), S_OK);
    EXPECT_EQ(strength, -60);

    auto const guid = Lookup(device, "System.Devices.Aep.ProtocolId");
    GUID protocol{};
    EXPECT_EQ(guid->get_Type(&type), S_OK);
    EXPECT_EQ(type, PropertyType::Guid);
    EXPECT_EQ(guid->GetGuid(&protocol), S_OK);
    EXPECT_EQ(protocol, (GUID{0xE0CBF06C, 0xCD8B, 0x4647, {0xBB, 0x8A, 0x26, 0x3B, 0x43, 0xF0, 0xF9, 0x74}}));
}

TEST_F(Device, RefusesValuesOfAnotherType)
{
    auto const value = Lookup(FindDevice(speaker), "System.Devices.Aep.CanPair");
    String text;
    INT32 number = 0;
    UINT32 size = 0;
    HSTRING* texts = nullptr;
    EXPECT_EQ(value->GetString(text.Put()), typeMismatch);
    EXPECT_EQ(value->GetInt32(&number), typeMismatch);
    EXPECT_EQ(value->GetStringArray(&size, &texts), typeMismatch);
    EXPECT_EQ(value->GetBoolean(nullptr), E_POINTER);
}

TEST_F(Device, BoxesAlsoAsReferences)
{
    constexpr GUID referenceToBoolean{0x3C00FD60, 0x2950, 0x5939, {0xA2, 0x1A, 0x2D, 0x12, 0xC5, 0xA0, 0x1B, 0x8A}};
    EXPECT_TRUE(Lookup(FindDevice(speaker), "System.Devices.Aep.CanPair").Answers(referenceToBoolean));
    EXPECT_FALSE(Lookup(FindDevice(speaker), "System.ItemNameDisplay").Answers(referenceToBoolean));
}

TEST_F(Device, MapAnswersForKeysItHasNot)
{
    auto const map = MapOf(FindDevice(speaker));
    Com<::IInspectable> value;
    EXPECT_EQ(map->Lookup(String("System.Devices.Aep.IsConnected").Get(), value.Put()), outOfBounds);
    boolean found = true;
    EXPECT_EQ(map->HasKey(String("System.Devices.Aep.IsConnected").Get(), &found), S_OK);
    EXPECT_FALSE(found);
    EXPECT_EQ(map->HasKey(String("System.ItemNameDisplay").Get(), &found), S_OK);
    EXPECT_TRUE(found);
    UINT32 size = 0;
    EXPECT_EQ(map->get_Size(&size), S_OK);
    EXPECT_EQ(size, 12u);
    Com<PropertyMap> first;
    Com<PropertyMap> second;
    EXPECT_EQ(map->Split(first.Put(), second.Put()), S_OK);
    EXPECT_FALSE(first);
    EXPECT_FALSE(second);
    EXPECT_EQ(ClassNameOf(map.Get()), "Windows.Foundation.Collections.IMapView`2<String, Object>");
}

TEST_F(Device, MapIteratesInStepsAndInBulk)
{
    auto const map = MapOf(FindDevice(speaker));
    Com<IIterator<Pair*>> iterator;
    ASSERT_EQ(map.As<IIterable<Pair*>>()->First(iterator.Put()), S_OK);
    Pair* pairs[20]{};
    UINT32 count = 0;
    EXPECT_EQ(iterator->GetMany(5, pairs, &count), S_OK);
    EXPECT_EQ(count, 5u);
    EXPECT_EQ(iterator->GetMany(15, pairs + 5, &count), S_OK);
    EXPECT_EQ(count, 7u);
    for (auto* const pair : pairs)
    {
        if (pair)
        {
            pair->Release();
        }
    }
    boolean more = true;
    EXPECT_EQ(iterator->get_HasCurrent(&more), S_OK);
    EXPECT_FALSE(more);
    EXPECT_EQ(iterator->MoveNext(&more), S_OK);
    EXPECT_FALSE(more);
    Com<Pair> pair;
    EXPECT_EQ(iterator->get_Current(pair.Put()), outOfBounds);
}

TEST_F(Device, IsASnapshot)
{
    auto const device = FindDevice(speaker);
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"New\"");
    SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "true");
    EXPECT_EQ(NameOf(device), "Kitchen Speaker");
    EXPECT_FALSE(IsPaired(device));
    EXPECT_EQ(NameOf(FindDevice(speaker)), "New");
    EXPECT_TRUE(IsPaired(FindDevice(speaker)));
}

TEST_F(Device, FollowsAnUpdate)
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
    EXPECT_THAT(KeysOf(device.Get()), Contains("System.Devices.Aep.SignalStrength"));
}

TEST_F(Device, RefusesTheUpdateOfAnother)
{
    auto const device = FindDevice(speaker);
    auto const update = UpdateBy("System.ItemNameDisplay", "\"Rat\"", mouse);
    EXPECT_EQ(device->Update(update.Get()), E_INVALIDARG);
    EXPECT_EQ(NameOf(device), "Kitchen Speaker");
}

TEST_F(Device, MayLoseItsName)
{
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "");
    EXPECT_EQ(NameOf(FindDevice(speaker)), "");
    EXPECT_FALSE(Lookup(FindDevice(speaker), "System.ItemNameDisplay"));
}

TEST_F(Device, UpdateTellsWhatItIs)
{
    auto const update = UpdateBy("System.ItemNameDisplay", "\"New\"");
    EXPECT_EQ(IdOf(update.Get()), speaker);
    EXPECT_THAT(KeysOf(update.Get()), testing::ElementsAre("System.ItemNameDisplay"));
    DeviceInformationKind kind{};
    EXPECT_EQ(update.As<IDeviceInformationUpdate2>()->get_Kind(&kind), S_OK);
    EXPECT_EQ(kind, DeviceInformationKind::AssociationEndpoint);
    EXPECT_EQ(ClassNameOf(update.Get()), "Windows.Devices.Enumeration.DeviceInformationUpdate");
    EXPECT_EQ(update->get_Id(nullptr), E_POINTER);
    EXPECT_EQ(update->get_Properties(nullptr), E_POINTER);
}

TEST_F(Device, KeepsOnePairingObject)
{
    auto const device = FindDevice(speaker);
    EXPECT_EQ(PairingOf(device).Get(), PairingOf(device).Get());
    EXPECT_EQ(CustomOf(device).Get(), CustomOf(device).Get());
    EXPECT_EQ(ClassNameOf(PairingOf(device).Get()), "Windows.Devices.Enumeration.DeviceInformationPairing");
    EXPECT_EQ(ClassNameOf(CustomOf(device).Get()), "Windows.Devices.Enumeration.DeviceInformationCustomPairing");
}

TEST_F(Device, ReachesProtectionOnlyWhenPaired)
{
    DevicePairingProtectionLevel level{};
    EXPECT_EQ(PairingOf(FindDevice(speaker)).As<IDeviceInformationPairing2>()->get_ProtectionLevel(&level), S_OK);
    EXPECT_EQ(level, DevicePairingProtectionLevel::None);
    EXPECT_EQ(PairingOf(FindDevice(mouse)).As<IDeviceInformationPairing2>()->get_ProtectionLevel(&level), S_OK);
    EXPECT_EQ(level, DevicePairingProtectionLevel::EncryptionAndAuthentication);
}

TEST_F(Device, LeavesNothingBehind)
{
    {
        auto const device = FindDevice(speaker);
        KeysOf(device.Get());
        CustomOf(device);
    }
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}
