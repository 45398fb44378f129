// The properties of a device object, their map and their boxes.
#include "tests/simulator/Client.h"

#include <windows.h>
#include <winstring.h>

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

    struct Boxing
    {
        char const* property;
        char const* toml;
        PropertyType type;
        bool isNumber;
        GUID reference;
        char const* className;
    };

    constexpr Boxing boxes[] = {
        {"System.Devices.Aep.IsConnected", "true", PropertyType::Boolean, false, iid_of<IReference<boolean>>,
         "Windows.Foundation.IReference`1<Boolean>"},
        {"System.Devices.BatteryLife", "255", PropertyType::UInt8, true, iid_of<IReference<UInt8>>,
         "Windows.Foundation.IReference`1<UInt8>"},
        {"System.DeviceInterface.Bluetooth.VendorId", "65535", PropertyType::UInt16, true, iid_of<IReference<UINT16>>,
         "Windows.Foundation.IReference`1<UInt16>"},
        {"System.Devices.Aep.SignalStrength", "-5", PropertyType::Int32, true, iid_of<IReference<INT32>>,
         "Windows.Foundation.IReference`1<Int32>"},
        {"System.DeviceInterface.Bluetooth.Flags", "4294967295", PropertyType::UInt32, true, iid_of<IReference<UINT32>>,
         "Windows.Foundation.IReference`1<UInt32>"},
        {"System.Devices.Aep.ModelName", "'x'", PropertyType::String, false, iid_of<IReference<HSTRING>>,
         "Windows.Foundation.IReference`1<String>"},
        {"System.Devices.Aep.ModelId", "'{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}'", PropertyType::Guid, false,
         iid_of<IReference<GUID>>, "Windows.Foundation.IReference`1<Guid>"},
        {"System.DeviceInterface.Bluetooth.LastConnectedTime", "1601-01-01T00:00:00.0000007Z", PropertyType::DateTime,
         false, iid_of<IReference<platform::DateTime>>, "Windows.Foundation.IReference`1<Windows.Foundation.DateTime>"},
        {"System.Devices.PhysicalDeviceLocation", "[1, 255]", PropertyType::UInt8Array, false,
         iid_of<IReferenceArray<UInt8>>, "Windows.Foundation.IReferenceArray`1<UInt8>"},
        {"System.Devices.Aep.Category", "['a', 'Zoë']", PropertyType::StringArray, false,
         iid_of<IReferenceArray<HSTRING>>, "Windows.Foundation.IReferenceArray`1<String>"},
        {"System.Devices.AepContainer.ProtocolIds", "['{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}']",
         PropertyType::GuidArray, false, iid_of<IReferenceArray<GUID>>, "Windows.Foundation.IReferenceArray`1<Guid>"},
    };

    Com<IPropertyValue> Boxed(char const* property, char const* toml)
    {
        SimulateDeviceChanges(speaker, property, toml);
        return Lookup(FindDevice(speaker, {property}), property);
    }

    // The one type for which a getter answers, if it is among these; none takes a null.
    std::vector<PropertyType> TypesOf(Com<IPropertyValue> const& value)
    {
        std::vector<PropertyType> types;
        auto const note = [&types](HRESULT code, PropertyType type) {
            if (code == S_OK)
            {
                types.push_back(type);
            }
            else
            {
                EXPECT_EQ(code, typeMismatch);
            }
        };
        boolean flag{};
        UINT8 octet{};
        UINT16 word{};
        INT32 number{};
        UINT32 natural{};
        String text;
        GUID id{};
        platform::DateTime time{};
        note(value->GetBoolean(&flag), PropertyType::Boolean);
        note(value->GetUInt8(&octet), PropertyType::UInt8);
        note(value->GetUInt16(&word), PropertyType::UInt16);
        note(value->GetInt32(&number), PropertyType::Int32);
        note(value->GetUInt32(&natural), PropertyType::UInt32);
        note(value->GetString(text.Put()), PropertyType::String);
        note(value->GetGuid(&id), PropertyType::Guid);
        note(value->GetDateTime(&time), PropertyType::DateTime);
        UINT32 size = 0;
        UINT8* bytes = nullptr;
        HSTRING* texts = nullptr;
        GUID* ids = nullptr;
        note(value->GetUInt8Array(&size, &bytes), PropertyType::UInt8Array);
        note(value->GetStringArray(&size, &texts), PropertyType::StringArray);
        note(value->GetGuidArray(&size, &ids), PropertyType::GuidArray);
        for (UINT32 index = 0; texts && index < size; ++index)
        {
            WindowsDeleteString(texts[index]);
        }
        CoTaskMemFree(bytes);
        CoTaskMemFree(texts);
        CoTaskMemFree(ids);
        return types;
    }
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

class DevicePropertyBoxes : public SimulatorTest, public testing::WithParamInterface<Boxing>
{
};

TEST_P(DevicePropertyBoxes, AreOfTheirTypeAlone)
{
    auto const& [property, toml, type, isNumber, reference, className] = GetParam();
    auto const value = Boxed(property, toml);
    ASSERT_TRUE(value);
    PropertyType found{};
    EXPECT_EQ(value->get_Type(&found), S_OK);
    EXPECT_EQ(found, type);
    boolean number = !isNumber;
    EXPECT_EQ(value->get_IsNumericScalar(&number), S_OK);
    EXPECT_EQ(number, isNumber);
    EXPECT_EQ(ClassNameOf(value.Get()), className);
    for (auto const& other : boxes)
    {
        EXPECT_EQ(value.Answers(other.reference), other.type == type) << other.className;
    }
    EXPECT_THAT(TypesOf(value), testing::ElementsAre(type));
}

INSTANTIATE_TEST_SUITE_P(Each, DevicePropertyBoxes, testing::ValuesIn(boxes));

TEST_F(DeviceProperties, KeepTheirNumbers)
{
    UINT8 octet{};
    UINT16 word{};
    UINT32 natural{};
    platform::DateTime time{};
    EXPECT_EQ(Boxed("System.Devices.BatteryLife", "255")->GetUInt8(&octet), S_OK);
    EXPECT_EQ(octet, 255);
    EXPECT_EQ(Boxed("System.DeviceInterface.Bluetooth.VendorId", "65535")->GetUInt16(&word), S_OK);
    EXPECT_EQ(word, 65535);
    EXPECT_EQ(Boxed("System.DeviceInterface.Bluetooth.Flags", "4294967295")->GetUInt32(&natural), S_OK);
    EXPECT_EQ(natural, 4294967295u);
    EXPECT_EQ(
        Boxed("System.DeviceInterface.Bluetooth.LastConnectedTime", "1601-01-01T00:00:00.0000007Z")->GetDateTime(&time),
        S_OK);
    EXPECT_EQ(time.UniversalTime, 7);
}

TEST_F(DeviceProperties, HandOutCopiesOfTheirLists)
{
    auto const category = Boxed("System.Devices.Aep.Category", "['a', 'Zoë']");
    for (int round = 0; round < 2; ++round)
    {
        UINT32 size = 0;
        HSTRING* texts = nullptr;
        ASSERT_EQ(category.As<IReferenceArray<HSTRING>>()->get_Value(&size, &texts), S_OK);
        ASSERT_EQ(size, 2u);
        String first;
        String second;
        *first.Put() = texts[0];
        *second.Put() = texts[1];
        EXPECT_EQ(first.Utf8(), "a");
        EXPECT_EQ(second.Utf8(), "Zoë");
        CoTaskMemFree(texts);
    }
    UINT32 size = 0;
    UINT8* bytes = nullptr;
    ASSERT_EQ(Boxed("System.Devices.PhysicalDeviceLocation", "[1, 255]")->GetUInt8Array(&size, &bytes), S_OK);
    EXPECT_THAT(std::vector<UINT8>(bytes, bytes + size), testing::ElementsAre(1, 255));
    CoTaskMemFree(bytes);
    GUID* ids = nullptr;
    ASSERT_EQ(Boxed("System.Devices.AepContainer.ProtocolIds", "['{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}']")
                  ->GetGuidArray(&size, &ids),
              S_OK);
    ASSERT_EQ(size, 1u);
    EXPECT_EQ(ids[0], (GUID{0xE0CBF06C, 0xCD8B, 0x4647, {0xBB, 0x8A, 0x26, 0x3B, 0x43, 0xF0, 0xF9, 0x74}}));
    CoTaskMemFree(ids);
    HSTRING* none = nullptr;
    EXPECT_EQ(Boxed("System.Devices.Aep.Category", "[]")->GetStringArray(&size, &none), S_OK);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(category->GetStringArray(nullptr, &none), E_POINTER);
    EXPECT_EQ(category->GetStringArray(&size, nullptr), E_POINTER);
}

TEST_F(DeviceProperties, TellWhenTheDeviceWasSeen)
{
    auto const* const name = "System.Devices.Aep.Bluetooth.LastSeenTime";
    auto const value = Lookup(FindDevice(speaker, {name}), name);
    ASSERT_TRUE(value);
    platform::DateTime time{};
    EXPECT_EQ(value->GetDateTime(&time), S_OK);
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    auto const ticks = static_cast<INT64>(UINT64{now.dwHighDateTime} << 32 | now.dwLowDateTime);
    EXPECT_NEAR(static_cast<double>(time.UniversalTime), static_cast<double>(ticks), 600e7); // a minute
}

TEST_F(DeviceProperties, DecideWhetherItIsEnabledAndTheDefault)
{
    auto const flags = [] {
        auto const device = FindDevice(speaker);
        boolean enabled{};
        boolean isDefault{};
        EXPECT_EQ(device->get_IsEnabled(&enabled), S_OK);
        EXPECT_EQ(device->get_IsDefault(&isDefault), S_OK);
        return std::pair(enabled != 0, isDefault != 0);
    };
    EXPECT_EQ(flags(), std::pair(true, false));
    SimulateDeviceChanges(speaker, "System.Devices.InterfaceEnabled", "false");
    SimulateDeviceChanges(speaker, "System.Devices.IsDefault", "false");
    EXPECT_EQ(flags(), std::pair(false, false));
    SimulateDeviceChanges(speaker, "System.Devices.InterfaceEnabled", "true");
    SimulateDeviceChanges(speaker, "System.Devices.IsDefault", "true");
    EXPECT_EQ(flags(), std::pair(true, true));
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
