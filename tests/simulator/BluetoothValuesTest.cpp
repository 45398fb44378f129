// What a device says of itself: identifier, class, appearance.
#include "tests/simulator/BluetoothClient.h"

using namespace test;

namespace
{
    using BluetoothValues = SimulatorTest;
    using Class = platform::IBluetoothClassOfDevice;
    using Id = platform::IBluetoothDeviceId;

    void ExpectClass(Com<Class> const& value, UINT32 raw, BluetoothMajorClass major, INT32 minor, UINT32 services)
    {
        EXPECT_EQ(Read(value, &Class::get_RawValue), raw);
        EXPECT_EQ(Read(value, &Class::get_MajorClass), major);
        EXPECT_EQ(Read(value, &Class::get_MinorClass), minor);
        EXPECT_EQ(Read(value, &Class::get_ServiceCapabilities), services);
    }
} // namespace

TEST_F(BluetoothValues, ClassOfDeviceIsTakenApartAndPutTogether)
{
    auto const statics = StaticsOf<IBluetoothClassOfDeviceStatics>(classOfDeviceClass);
    Com<Class> value;
    ASSERT_EQ(statics->FromRawValue(0x240418, value.Put()), S_OK); // headphones
    EXPECT_EQ(ClassNameOf(value.Get()), classOfDeviceClass);
    ExpectClass(value, 0x240418, BluetoothMajorClass::AudioVideo, 6, 0x120);
    ASSERT_EQ(statics->FromParts(BluetoothMajorClass::AudioVideo, 6, 0x120, value.Put()), S_OK);
    ExpectClass(value, 0x240418, BluetoothMajorClass::AudioVideo, 6, 0x120);
}

TEST_F(BluetoothValues, ClassOfDeviceRefusesPartsThatDoNotFit)
{
    auto const statics = StaticsOf<IBluetoothClassOfDeviceStatics>(classOfDeviceClass);
    Com<Class> value;
    EXPECT_EQ(statics->FromParts(static_cast<BluetoothMajorClass>(32), 0, 0, value.Put()), E_INVALIDARG);
    EXPECT_FALSE(value);
    EXPECT_EQ(statics->FromParts(BluetoothMajorClass::Toy, 64, 0, value.Put()), E_INVALIDARG);
    EXPECT_EQ(statics->FromParts(BluetoothMajorClass::Toy, -1, 0, value.Put()), E_INVALIDARG);
    EXPECT_EQ(statics->FromParts(BluetoothMajorClass::Toy, 0, 0x800, value.Put()), E_INVALIDARG);
    EXPECT_EQ(statics->FromParts(BluetoothMajorClass::Toy, 0, 0, nullptr), E_POINTER);
    EXPECT_EQ(statics->FromRawValue(0, nullptr), E_POINTER);
}

TEST_F(BluetoothValues, DeviceIdTellsTheProtocol)
{
    auto const statics = StaticsOf<IBluetoothDeviceIdStatics>(deviceIdClass);
    Com<Id> id;
    ASSERT_EQ(statics->FromId(String(speaker).Get(), id.Put()), S_OK);
    EXPECT_EQ(ReadText(id, &Id::get_Id), speaker);
    EXPECT_TRUE(Read(id, &Id::get_IsClassicDevice));
    EXPECT_FALSE(Read(id, &Id::get_IsLowEnergyDevice));
    ASSERT_EQ(statics->FromId(String("BluetoothLE#BluetoothLE00:00:00:00:00:0a-00:00:00:00:00:0b").Get(), id.Put()),
              S_OK);
    EXPECT_FALSE(Read(id, &Id::get_IsClassicDevice));
    EXPECT_TRUE(Read(id, &Id::get_IsLowEnergyDevice));
}

TEST_F(BluetoothValues, DeviceIdRefusesWhatIsNone)
{
    auto const statics = StaticsOf<IBluetoothDeviceIdStatics>(deviceIdClass);
    Com<Id> id;
    for (auto const* const text :
         {"", "x", "Bluetooth#Bluetooth00:00:00:00:00:0a", "Bluetooth#Bluetooth00:00:00:00:00:0a-00:00:00:00:00:0g",
          "Bluetooth#Bluetooth00:00:00:00:00:0a+00:00:00:00:00:0b",
          "BluetoothLE#Bluetooth00:00:00:00:00:0a-00:00:00:00:00:0b",
          "Bluetooth#Bluetooth00:00:00:00:00:0a-00:00:00:00:00:0b "})
    {
        EXPECT_EQ(statics->FromId(String(text).Get(), id.Put()), E_INVALIDARG) << text;
    }
    EXPECT_EQ(statics->FromId(nullptr, nullptr), E_POINTER);
}
