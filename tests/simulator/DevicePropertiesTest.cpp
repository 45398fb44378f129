// The properties of a device object, their map and their boxes.
#include "tests/simulator/Client.h"

using namespace test;
using testing::Contains;
using testing::Not;
using testing::SizeIs;

namespace
{
    using Pair = IKeyValuePair<HSTRING, ::IInspectable*>;

    Com<PropertyMap> MapOf(Com<IDeviceInformation> const& device)
    {
        Com<PropertyMap> map;
        EXPECT_EQ(device->get_Properties(map.Put()), S_OK);
        return map;
    }

    Com<IPropertyValue> Lookup(Com<IDeviceInformation> const& device, std::string const& key)
    {
        Com<::IInspectable> value;
        EXPECT_EQ(MapOf(device)->Lookup(String(key).Get(), value.Put()), S_OK) << key;
        return value ? value.As<IPropertyValue>() : Com<IPropertyValue>();
    }

    using DeviceProperties = SimulatorTest;
} // namespace

TEST_F(DeviceProperties, AreThoseOfEveryDeviceAndThoseAskedFor)
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
    EXPECT_THAT(keys, SizeIs(13));
    EXPECT_THAT(keys, Not(Contains("System.Devices.Aep.IsConnected"))); // nobody asked
}

TEST_F(DeviceProperties, ThatDoNotApplyAreNull)
{
    auto const device = FindDevice(speaker, {"System.Devices.InterfaceClassGuid"});
    EXPECT_FALSE(Lookup(device, "System.Devices.InterfaceClassGuid"));
    EXPECT_FALSE(Lookup(device, "System.Devices.DeviceInstanceId"));
}

TEST_F(DeviceProperties, AreBoxedByTheirType)
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

TEST_F(DeviceProperties, AreRefusedAsAnotherType)
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

TEST_F(DeviceProperties, AreReferencesToo)
{
    constexpr GUID referenceToBoolean{0x3C00FD60, 0x2950, 0x5939, {0xA2, 0x1A, 0x2D, 0x12, 0xC5, 0xA0, 0x1B, 0x8A}};
    EXPECT_TRUE(Lookup(FindDevice(speaker), "System.Devices.Aep.CanPair").Answers(referenceToBoolean));
    EXPECT_FALSE(Lookup(FindDevice(speaker), "System.ItemNameDisplay").Answers(referenceToBoolean));
}

TEST_F(DeviceProperties, MapAnswersForKeysItHasNot)
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

TEST_F(DeviceProperties, MapIteratesInStepsAndInBulk)
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

TEST_F(DeviceProperties, MayLoseTheName)
{
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "");
    EXPECT_EQ(NameOf(FindDevice(speaker)), "");
    EXPECT_FALSE(Lookup(FindDevice(speaker), "System.ItemNameDisplay"));
}
