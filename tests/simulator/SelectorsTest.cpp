// The filters that the device classes hand out.
#include "tests/simulator/BluetoothClient.h"
#include "tests/simulator/Recorder.h"

using namespace test;
using testing::ElementsAre;

namespace
{
    using Selectors = SimulatorTest;

    std::string const booleanType = "System.StructuredQueryType.Boolean#";
    std::string const classicPart = "System.Devices.DevObjectType:=5 AND System.Devices.Aep.ProtocolId:="
                                    "\"{E0CBF06C-CD8B-4647-BB8A-263B43F0F974}\" AND ";
    std::string const lePart = "System.Devices.DevObjectType:=5 AND System.Devices.Aep.ProtocolId:="
                               "\"{BB7BB05E-5972-42B5-94FC-76EAA7084D49}\" AND ";

    std::string With(std::string const& condition, bool inquire)
    {
        return "(" + condition + " OR System.Devices.Aep.Bluetooth.IssueInquiry:=" + booleanType +
               (inquire ? "True" : "False") + ")";
    }

    template <typename Get>
    std::string TextOf(Get get)
    {
        String text;
        EXPECT_EQ(get(nullptr), E_POINTER);
        EXPECT_EQ(get(text.Put()), S_OK);
        return text.Utf8();
    }

    // What both classes hand out alike.
    template <typename S, typename S2>
    void ExpectCommonSelectors(Com<S> const& statics, Com<S2> const& statics2, std::string const& part)
    {
        auto const paired = part + With("System.Devices.Aep.IsPaired:=" + booleanType + "True", false);
        EXPECT_EQ(TextOf([&](HSTRING* to) { return statics->GetDeviceSelector(to); }), paired);
        EXPECT_EQ(TextOf([&](HSTRING* to) { return statics2->GetDeviceSelectorFromPairingState(true, to); }), paired);
        EXPECT_EQ(TextOf([&](HSTRING* to) { return statics2->GetDeviceSelectorFromPairingState(false, to); }),
                  part + With("System.Devices.Aep.IsPaired:=" + booleanType + "False", true));
        using enum BluetoothConnectionStatus;
        EXPECT_EQ(TextOf([&](HSTRING* to) { return statics2->GetDeviceSelectorFromConnectionStatus(Connected, to); }),
                  part + With("System.Devices.Aep.IsConnected:=" + booleanType + "True", false));
        EXPECT_EQ(
            TextOf([&](HSTRING* to) { return statics2->GetDeviceSelectorFromConnectionStatus(Disconnected, to); }),
            part + With("System.Devices.Aep.IsConnected:=" + booleanType + "False", true));
        String const name("The \"blue\" one");
        EXPECT_EQ(TextOf([&](HSTRING* to) { return statics2->GetDeviceSelectorFromDeviceName(name.Get(), to); }),
                  part + With("System.ItemNameDisplay:=\"The \"\"blue\"\" one\"", true));
        EXPECT_EQ(
            TextOf([&](HSTRING* to) { return statics2->GetDeviceSelectorFromBluetoothAddress(0xA4C1385E220F, to); }),
            part + With("System.Devices.Aep.DeviceAddress:=\"a4:c1:38:5e:22:0f\"", true));
        String refused;
        EXPECT_EQ(statics2->GetDeviceSelectorFromBluetoothAddress(0x1'0000'0000'0000, refused.Put()), E_INVALIDARG);
        EXPECT_EQ(
            statics2->GetDeviceSelectorFromConnectionStatus(static_cast<BluetoothConnectionStatus>(2), refused.Put()),
            E_INVALIDARG);
    }
} // namespace

TEST_F(Selectors, OfClassicDevices)
{
    auto const statics = StaticsOf<IBluetoothDeviceStatics>(deviceClass);
    auto const statics2 = statics.As<IBluetoothDeviceStatics2>();
    ExpectCommonSelectors(statics, statics2, classicPart);
    Com<platform::IBluetoothClassOfDevice> value;
    ASSERT_EQ(StaticsOf<IBluetoothClassOfDeviceStatics>(classOfDeviceClass)->FromRawValue(0x240418, value.Put()), S_OK);
    EXPECT_EQ(
        TextOf([&](HSTRING* to) { return statics2->GetDeviceSelectorFromClassOfDevice(value.Get(), to); }),
        classicPart +
            With("(System.Devices.Aep.Bluetooth.Cod.Major:=4 AND System.Devices.Aep.Bluetooth.Cod.Minor:=6)", true));
    String refused;
    EXPECT_EQ(statics2->GetDeviceSelectorFromClassOfDevice(nullptr, refused.Put()), E_INVALIDARG);
}

TEST_F(Selectors, OfLeDevices)
{
    auto const statics = StaticsOf<IBluetoothLEDeviceStatics>(leDeviceClass);
    auto const statics2 = statics.As<IBluetoothLEDeviceStatics2>();
    ExpectCommonSelectors(statics, statics2, lePart);
    auto const typed = [&](BluetoothAddressType type) {
        return TextOf([&](HSTRING* to) {
            return statics2->GetDeviceSelectorFromBluetoothAddressWithBluetoothAddressType(0xA, type, to);
        });
    };
    EXPECT_EQ(typed(BluetoothAddressType::Unspecified),
              lePart + With("System.Devices.Aep.DeviceAddress:=\"00:00:00:00:00:0a\"", true));
    EXPECT_EQ(typed(BluetoothAddressType::Random),
              lePart + With("(System.Devices.Aep.DeviceAddress:=\"00:00:00:00:00:0a\" AND "
                            "System.Devices.Aep.Bluetooth.Le.AddressType:=1)",
                            true));
    Com<platform::IBluetoothLEAppearance> appearance;
    ASSERT_EQ(LeDevice(mouse).As<IBluetoothLEDevice2>()->get_Appearance(appearance.Put()), S_OK);
    EXPECT_EQ(TextOf([&](HSTRING* to) { return statics2->GetDeviceSelectorFromAppearance(appearance.Get(), to); }),
              lePart + With("System.Devices.Aep.Bluetooth.Le.Appearance:=0", true));
    String refused;
    EXPECT_EQ(statics2->GetDeviceSelectorFromAppearance(nullptr, refused.Put()), E_INVALIDARG);
}

TEST_F(Selectors, FindTheirDevices)
{
    auto const heardWith = [](auto const& statics2, auto get) {
        return HeardBy(MakeWatcher(TextOf([&](HSTRING* to) { return get(*statics2.Get(), to); })));
    };
    auto const classic = StaticsOf<IBluetoothDeviceStatics>(deviceClass).As<IBluetoothDeviceStatics2>();
    auto const le = StaticsOf<IBluetoothLEDeviceStatics>(leDeviceClass).As<IBluetoothLEDeviceStatics2>();
    auto const paired = [](auto& statics, HSTRING* to) { return statics.GetDeviceSelectorFromPairingState(true, to); };
    auto const unpaired = [](auto& statics, HSTRING* to) {
        return statics.GetDeviceSelectorFromPairingState(false, to);
    };
    auto const address = [](auto& statics, HSTRING* to) {
        return statics.GetDeviceSelectorFromBluetoothAddress(0xA4C1385E220F, to);
    };
    EXPECT_THAT(heardWith(classic, paired), ElementsAre(completed));
    EXPECT_THAT(heardWith(classic, unpaired), ElementsAre(addedSpeaker, completed));
    EXPECT_THAT(heardWith(classic, address), ElementsAre(addedSpeaker, completed));
    EXPECT_THAT(heardWith(le, paired), ElementsAre(addedMouse, completed));
    EXPECT_THAT(heardWith(le, address), ElementsAre(completed));
}

TEST_F(Selectors, FindWhatADeviceSaysThatItIs)
{
    // Of each pair the second one is almost as the first.
    Load(R"(
enumeration-completes-ms = 0
[[device]]
address = "00:00:00:00:00:01"
class-of-device = 0x240418
[[device]]
address = "00:00:00:00:00:02"
class-of-device = 0x240404
[[device]]
address = "00:00:00:00:00:03"
protocols = ["le"]
appearance = 962
[device.properties]
"System.Devices.Aep.Bluetooth.Le.AddressType" = 1
[[device]]
address = "00:00:00:00:00:04"
protocols = ["le"]
appearance = 961
[[device]]
address = "00:00:00:00:00:05"
protocols = ["classic", "le"]
)");
    auto const id = [](char digit) {
        return (digit < '3' ? "Bluetooth#Bluetooth" : "BluetoothLE#BluetoothLE") +
               std::string("00:1a:7d:da:71:13-00:00:00:00:00:0") + digit;
    };
    auto const found = [](auto get) { return IdsOf(FindAll(TextOf(get))); };

    auto const classic = StaticsOf<IBluetoothDeviceStatics>(deviceClass).As<IBluetoothDeviceStatics2>();
    for (char const digit : {'1', '2'})
    {
        Com<platform::IBluetoothClassOfDevice> value;
        ASSERT_EQ(ClassicDevice(id(digit))->get_ClassOfDevice(value.Put()), S_OK);
        EXPECT_THAT(found([&](HSTRING* to) { return classic->GetDeviceSelectorFromClassOfDevice(value.Get(), to); }),
                    ElementsAre(id(digit)));
    }

    auto const le = StaticsOf<IBluetoothLEDeviceStatics>(leDeviceClass).As<IBluetoothLEDeviceStatics2>();
    for (char const digit : {'3', '4'})
    {
        auto const device = LeDevice(id(digit)).As<IBluetoothLEDevice2>();
        Com<platform::IBluetoothLEAppearance> appearance;
        ASSERT_EQ(device->get_Appearance(appearance.Put()), S_OK);
        EXPECT_THAT(found([&](HSTRING* to) { return le->GetDeviceSelectorFromAppearance(appearance.Get(), to); }),
                    ElementsAre(id(digit)));
        auto const withAddress = [&](BluetoothAddressType type) {
            return found([&](HSTRING* to) {
                return le->GetDeviceSelectorFromBluetoothAddressWithBluetoothAddressType(UINT64(digit - '0'), type, to);
            });
        };
        auto const type = Read(device, &IBluetoothLEDevice2::get_BluetoothAddressType);
        EXPECT_EQ(type, digit == '3' ? BluetoothAddressType::Random : BluetoothAddressType::Public);
        EXPECT_THAT(withAddress(type), ElementsAre(id(digit)));
        EXPECT_THAT(withAddress(BluetoothAddressType::Unspecified), ElementsAre(id(digit)));
        EXPECT_THAT(withAddress(digit == '3' ? BluetoothAddressType::Public : BluetoothAddressType::Random),
                    ElementsAre());
    }
}
