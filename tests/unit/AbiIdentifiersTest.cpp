// The identifiers of the platform's interfaces. One wrong digit works against a stand-in and fails on Windows.
#include "platform/abi/Bluetooth.h"
#include "platform/abi/Enumeration.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <bcrypt.h>

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

using namespace platform;

namespace
{
    std::string TextOf(GUID const& id)
    {
        std::array<char, 37> text{};
        auto const& tail = id.Data4;
        std::snprintf(text.data(), text.size(), "%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X",
                      static_cast<unsigned long>(id.Data1), unsigned{id.Data2}, unsigned{id.Data3}, unsigned{tail[0]},
                      unsigned{tail[1]}, unsigned{tail[2]}, unsigned{tail[3]}, unsigned{tail[4]}, unsigned{tail[5]},
                      unsigned{tail[6]}, unsigned{tail[7]});
        return text.data();
    }

    struct Identifier
    {
        std::string_view text;
        GUID id;
    };

    using AbiIdentifier = testing::TestWithParam<Identifier>;

    // A parameterised identifier is a version-5 UUID: SHA-1 of a namespace and the type's signature.
    std::string IdentifierOf(std::string_view signature)
    {
        std::vector<UCHAR> input{0x11, 0xF4, 0x7A, 0xD5, 0x7B, 0x73, 0x42, 0xC0,
                                 0xAB, 0xAE, 0x87, 0x8B, 0x1E, 0x16, 0xAD, 0xEE};
        input.insert(input.end(), signature.begin(), signature.end());

        BCRYPT_ALG_HANDLE algorithm = nullptr;
        EXPECT_EQ(BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA1_ALGORITHM, nullptr, 0), 0);
        std::array<UCHAR, 20> hash{};
        EXPECT_EQ(BCryptHash(algorithm, nullptr, 0, input.data(), static_cast<ULONG>(input.size()), hash.data(),
                             static_cast<ULONG>(hash.size())),
                  0);
        BCryptCloseAlgorithmProvider(algorithm, 0);

        hash[6] = static_cast<UCHAR>((hash[6] & 0x0F) | 0x50); // version 5
        hash[8] = static_cast<UCHAR>((hash[8] & 0x3F) | 0x80); // the variant of RFC 4122
        std::string text;
        for (std::size_t index = 0; index < 16; ++index)
        {
            std::array<char, 3> digits{};
            std::snprintf(digits.data(), digits.size(), "%02X", unsigned{hash[index]});
            text += (index == 4 || index == 6 || index == 8 || index == 10 ? "-" : "") + std::string(digits.data());
        }
        return text;
    }

    std::string Generic(std::string_view interfaceId, std::vector<std::string> const& arguments)
    {
        std::string signature = "pinterface({" + std::string(interfaceId) + "}";
        for (auto const& argument : arguments)
        {
            signature += ";" + argument;
        }
        return signature + ")";
    }

    std::string Class(std::string_view name, std::string_view defaultInterface)
    {
        return "rc(Windows.Devices.Enumeration." + std::string(name) + ";" + std::string(defaultInterface) + ")";
    }

    // The generic interfaces, by the identifiers that they have before they get their arguments.
    constexpr auto typedEventHandler = "9de1c534-6ae1-11e0-84e1-18a905bcc53f";
    constexpr auto asyncOperation = "9fc2b0bb-e446-44e2-aa61-9cab8f636af2";
    constexpr auto completedHandler = "fcdcf02c-e5d8-4478-915a-4d90b74b83a5";
    constexpr auto asyncOperationWithProgress = "b5d036d7-e297-498f-ba60-0289e76e23dd";
    constexpr auto progressHandler = "55690902-0aab-421a-8778-f8ce5026d758";
    constexpr auto completedHandlerWithProgress = "e85df41d-6aa7-46e3-a8e2-f009d840c627";
    constexpr auto iterable = "faa585ea-6214-4217-afda-7f46de5869b3";
    constexpr auto iterator = "6a79e863-4300-459a-9966-cbb660963ee1";
    constexpr auto vector = "913337e9-11a1-4345-a3a2-4e7f956e222d";
    constexpr auto vectorView = "bbe1fa4c-b0e3-4583-baef-1f1b2e483e56";
    constexpr auto observableVector = "5917eb53-50b4-4a0d-b309-65862b3f1dbc";
    constexpr auto vectorChangedHandler = "0c051752-9fbf-4c70-aa0c-0e4c82d9a761";
    constexpr auto mapView = "e480ce40-a338-4ada-adcf-272272e48cb9";
    constexpr auto keyValuePair = "02b51929-c1c4-4a7e-8940-0312b5c18500";
    constexpr auto reference = "61c17706-2d65-11e0-9ae8-d48564015472";
    constexpr auto referenceArray = "61c17707-2d65-11e0-9ae8-d48564015472";

    std::string const text = "string";
    std::string const object = "cinterface(IInspectable)";
    std::string const watcher = Class("DeviceWatcher", "{c9eab97d-8f6b-4f96-a9f4-abc814e22271}");
    std::string const device = Class("DeviceInformation", "{aba0fb95-4398-489d-8e44-e6130927011f}");
    std::string const update = Class("DeviceInformationUpdate", "{8f315305-d972-44b7-a37e-9e822c78213b}");
    std::string const customPairing = Class("DeviceInformationCustomPairing", "{85138c02-4ee6-4914-8370-107a39144c0e}");
    std::string const pairingRequest =
        Class("DevicePairingRequestedEventArgs", "{f717fc56-de6b-487f-8376-0180aca69963}");
    std::string const pairingResult = Class("DevicePairingResult", "{072b02bf-dd95-4025-9b37-de51adba37b7}");
    std::string const unpairingResult = Class("DeviceUnpairingResult", "{66f44ad3-79d9-444b-92cf-a92ef72571c7}");
    std::string const devices = Class("DeviceInformationCollection", Generic(vectorView, {device}));
    std::string const thumbnail = Class("DeviceThumbnail", "{cc254827-4b3d-438f-9232-10c76bc7e038}");
    std::string const buffer = "{905a0fe0-bc53-11df-8c49-001e4fc686da}";
    std::string const property = Generic(keyValuePair, {text, object});

    std::string const bluetoothDevice =
        "rc(Windows.Devices.Bluetooth.BluetoothDevice;{2335b156-90d2-4a04-aef5-0e20b9e6b707})";
    std::string const bluetoothLEDevice =
        "rc(Windows.Devices.Bluetooth.BluetoothLEDevice;{b5ee2f7b-4ad8-4642-ac48-80a0b500e887})";
    std::string const bluetoothAdapter =
        "rc(Windows.Devices.Bluetooth.BluetoothAdapter;{7974f04c-5f7a-4a34-9225-a855f84b1a8b})";
    std::string const radio = "rc(Windows.Devices.Radios.Radio;{252118df-b33e-416a-875f-1cf38ae2d83e})";
    std::string const radioAccess = "enum(Windows.Devices.Radios.RadioAccessStatus;i4)";
    std::string const deviceAccess = "enum(Windows.Devices.Enumeration.DeviceAccessStatus;i4)";

    struct Parameterised
    {
        std::string_view identifier;
        std::string signature;
        GUID const* id;
    };

    using AbiParameterisedIdentifier = testing::TestWithParam<Parameterised>;

    using StringMap = IMapView<HSTRING, ::IInspectable*>;
    using StringPair = IKeyValuePair<HSTRING, ::IInspectable*>;

    constexpr Identifier basic[] = {
        {"00000000-0000-0000-C000-000000000046", iid_of<::IUnknown>},
        {"AF86E2E0-B12D-4C6A-9C5A-D7AA65101E90", iid_of<::IInspectable>},
        {"00000035-0000-0000-C000-000000000046", iid_of<::IActivationFactory>},
        {"00000003-0000-0000-C000-000000000046", iid_of<::IMarshal>},
        {"00000036-0000-0000-C000-000000000046", iid_of<platform::IAsyncInfo>},
        {"00000037-0000-0000-C000-000000000046", iid_of<platform::IWeakReference>},
        {"00000038-0000-0000-C000-000000000046", iid_of<platform::IWeakReferenceSource>},
        {"94EA2B94-E9CC-49E0-C0FF-EE64CA8F5B90", iid_of<platform::IAgileObject>},
        {"000001DA-0000-0000-C000-000000000046", iid_of<platform::IContextCallback>},
        {"30D5A829-7FA4-4026-83BB-D75BAE4EA99E", iid_of<IClosable>},
        {"D6269732-3B7F-46A7-B40B-4FDCA2A2C693", iid_of<IDeferral>},
        {"575933DF-34FE-4480-AF15-07691F3D5D9B", iid_of<IVectorChangedEventArgs>},
        {"4BD682DD-7554-40E9-9A9B-82654EDE7E62", iid_of<IPropertyValue>},
    };

    constexpr Identifier enumeration[] = {
        {"C17F100E-3A46-4A78-8013-769DC9B97390", iid_of<IDeviceInformationStatics>},
        {"493B4F34-A84F-45FD-9167-15D1CB1BD1F9", iid_of<IDeviceInformationStatics2>},
        {"ABA0FB95-4398-489D-8E44-E6130927011F", iid_of<IDeviceInformation>},
        {"F156A638-7997-48D9-A10C-269D46533F48", iid_of<IDeviceInformation2>},
        {"8F315305-D972-44B7-A37E-9E822C78213B", iid_of<IDeviceInformationUpdate>},
        {"5D9D148C-A873-485E-BAA6-AA620788E3CC", iid_of<IDeviceInformationUpdate2>},
        {"2C4769F5-F684-40D5-8469-E8DBAAB70485", iid_of<IDeviceInformationPairing>},
        {"F68612FD-0AEE-4328-85CC-1C742BB1790D", iid_of<IDeviceInformationPairing2>},
        {"E915C408-36D4-49A1-BF13-514173799B6B", iid_of<IDeviceInformationPairingStatics>},
        {"04DE5372-B7B7-476B-A74F-C5836A704D98", iid_of<IDeviceInformationPairingStatics2>},
        {"85138C02-4EE6-4914-8370-107A39144C0E", iid_of<IDeviceInformationCustomPairing>},
        {"F717FC56-DE6B-487F-8376-0180ACA69963", iid_of<IDevicePairingRequestedEventArgs>},
        {"C83752D9-E4D3-4DB0-A360-A105E437DBDC", iid_of<IDevicePairingRequestedEventArgs2>},
        {"072B02BF-DD95-4025-9B37-DE51ADBA37B7", iid_of<IDevicePairingResult>},
        {"66F44AD3-79D9-444B-92CF-A92EF72571C7", iid_of<IDeviceUnpairingResult>},
        {"C9EAB97D-8F6B-4F96-A9F4-ABC814E22271", iid_of<IDeviceWatcher>},
        {"FF08456E-ED14-49E9-9A69-8117C54AE971", iid_of<IDeviceWatcher2>},
    };

    constexpr Identifier streams[] = {
        {"905A0FE0-BC53-11DF-8C49-001E4FC686DA", iid_of<platform::IBuffer>},
        {"905A0FEF-BC53-11DF-8C49-001E4FC686DA", iid_of<platform::IBufferByteAccess>},
        {"905A0FE1-BC53-11DF-8C49-001E4FC686DA", iid_of<IRandomAccessStream>},
        {"905A0FE2-BC53-11DF-8C49-001E4FC686DA", iid_of<IInputStream>},
        {"905A0FE6-BC53-11DF-8C49-001E4FC686DA", iid_of<IOutputStream>},
        {"97D098A5-3B99-4DE9-88A5-E11D2F50C795", iid_of<IContentTypeProvider>},
        {"CC254827-4B3D-438F-9232-10C76BC7E038", iid_of<IRandomAccessStreamWithContentType>},
    };

    constexpr Identifier bluetooth[] = {
        {"0991DF51-57DB-4725-BBD7-84F64327EC2C", iid_of<platform::IBluetoothDeviceStatics>},
        {"C29E8E2F-4E14-4477-AA1B-B8B47E5B7ECE", iid_of<platform::IBluetoothDeviceStatics2>},
        {"2335B156-90D2-4A04-AEF5-0E20B9E6B707", iid_of<platform::IBluetoothDevice>},
        {"0133F954-B156-4DD0-B1F5-C11BC31A5163", iid_of<platform::IBluetoothDevice2>},
        {"57FFF78B-651A-4454-B90F-EB21EF0B0D71", iid_of<platform::IBluetoothDevice3>},
        {"817C34AD-0E9C-42B2-A8DC-3E8094940D12", iid_of<platform::IBluetoothDevice4>},
        {"B5E0B385-5E85-4559-A10D-1C7281379F96", iid_of<platform::IBluetoothDevice5>},
        {"C8CF1A19-F0B6-4BF0-8689-41303DE2D9F4", iid_of<platform::IBluetoothLEDeviceStatics>},
        {"5F12C06B-3BAC-43E8-AD16-563271BD41C2", iid_of<platform::IBluetoothLEDeviceStatics2>},
        {"B5EE2F7B-4AD8-4642-AC48-80A0B500E887", iid_of<platform::IBluetoothLEDevice>},
        {"26F062B3-7AEE-4D31-BABA-B1B9775F5916", iid_of<platform::IBluetoothLEDevice2>},
        {"AEE9E493-44AC-40DC-AF33-B2C13C01CA46", iid_of<platform::IBluetoothLEDevice3>},
        {"2B605031-2248-4B2F-ACF0-7CEE36FC5870", iid_of<platform::IBluetoothLEDevice4>},
        {"9D6A1260-5287-458E-95BA-17C8B7BB326E", iid_of<platform::IBluetoothLEDevice5>},
        {"C17949AF-57C1-4642-BCCE-E6C06B20AE76", iid_of<platform::IBluetoothDeviceId>},
        {"A7884E67-3EFB-4F31-BBC2-810E09977404", iid_of<platform::IBluetoothDeviceIdStatics>},
        {"D640227E-D7D7-4661-9454-65039CA17A2B", iid_of<platform::IBluetoothClassOfDevice>},
        {"E46135BD-0FA2-416C-91B4-C1E48CA061C1", iid_of<platform::IBluetoothClassOfDeviceStatics>},
        {"5D2079F2-66A8-4258-985E-02B4D9509F18", iid_of<platform::IBluetoothLEAppearance>},
        {"8B02FB6A-AC4C-4741-8661-8EAB7D17EA9F", iid_of<platform::IBluetoothAdapterStatics>},
        {"7974F04C-5F7A-4A34-9225-A855F84B1A8B", iid_of<platform::IBluetoothAdapter>},
        {"AC94CECC-24D5-41B3-916D-1097C50B102B", iid_of<platform::IBluetoothAdapter2>},
        {"8F8624E0-CBA9-5211-9F89-3AAC62B4C6B8", iid_of<platform::IBluetoothAdapter3>},
        {"5FB6A12E-67CB-46AE-AAE9-65919F86EFF4", iid_of<platform::IRadioStatics>},
        {"252118DF-B33E-416A-875F-1CF38AE2D83E", iid_of<platform::IRadio>},
    };

    Parameterised const declared[] = {
        {"03C5A07B-990C-5D09-B0B8-5734EAA38222", Generic(typedEventHandler, {watcher, device}), &iid_of<AddedHandler>},
        {"906F1254-79AD-54FC-93C4-CDB99B437899", Generic(typedEventHandler, {watcher, update}), &iid_of<UpdateHandler>},
        {"9234630F-1FF4-54F6-9E3F-AC20369B7725", Generic(typedEventHandler, {watcher, object}),
         &iid_of<WatcherHandler>},
        {"FA65231F-4178-5DE1-B2CC-03E22D7702B4", Generic(typedEventHandler, {customPairing, pairingRequest}),
         &iid_of<PairingRequestedHandler>},
        {"1002DB74-8948-591E-815D-E40B667599A3", Generic(asyncOperation, {pairingResult}), &iid_of<PairingOperation>},
        {"7EE0247F-5F57-5CB2-B40E-18B5A211D6C3", Generic(completedHandler, {pairingResult}),
         &iid_of<PairingCompletedHandler>},
        {"2BB4DF3D-BD7E-5FE0-9020-56DC0D30B935", Generic(asyncOperation, {unpairingResult}),
         &iid_of<UnpairingOperation>},
        {"9BBE6EB9-DB2D-5160-A20C-F0C265F20D8E", Generic(completedHandler, {unpairingResult}),
         &iid_of<UnpairingCompletedHandler>},
        {"E2FCC7C1-3BFC-5A0B-B2B0-72E769D1CB7E", Generic(iterable, {text}), &iid_of<IIterable<HSTRING>>},
        {"8C304EBB-6615-50A4-8829-879ECD443236", Generic(iterator, {text}), &iid_of<IIterator<HSTRING>>},
        {"98B9ACC1-4B56-532E-AC73-03D5291CCA90", Generic(vector, {text}), &iid_of<IVector<HSTRING>>},
        {"2F13C006-A03A-5F69-B090-75A43E33423E", Generic(vectorView, {text}), &iid_of<IVectorView<HSTRING>>},
        {"BB78502A-F79D-54FA-92C9-90C5039FDF7E", Generic(mapView, {text, object}), &iid_of<StringMap>},
        {"09335560-6C6B-5A26-9348-97B781132B20", property, &iid_of<StringPair>},
        {"FE2F3D47-5D47-5499-8374-430C7CDA0204", Generic(iterable, {property}), &iid_of<IIterable<StringPair*>>},
        {"5DB5FA32-707C-5849-A06B-91C8EB9D10E8", Generic(iterator, {property}), &iid_of<IIterator<StringPair*>>},
    };

    Parameterised const ofStreams[] = {
        {"BAC083A3-3A19-5072-9D90-133323A049BA", Generic(asyncOperation, {thumbnail}), &iid_of<ThumbnailOperation>},
        {"86D455B2-D795-554C-9C31-BF6539349C19", Generic(completedHandler, {thumbnail}),
         &iid_of<ThumbnailCompletedHandler>},
        {"D26B2819-897F-5C7D-84D6-56D796561431", Generic(asyncOperationWithProgress, {buffer, "u4"}),
         &iid_of<ReadOperation>},
        {"BF666554-7605-5D9A-B14E-18D8C8472AFE", Generic(progressHandler, {buffer, "u4"}),
         &iid_of<ReadProgressHandler>},
        {"06386A7A-E009-5B0B-AB68-A8E48B516647", Generic(completedHandlerWithProgress, {buffer, "u4"}),
         &iid_of<ReadCompletedHandler>},
    };

    Parameterised const ofBluetooth[] = {
        {"B58D8D19-44BD-5AC0-A0D6-1B50800F3181", Generic(asyncOperation, {bluetoothDevice}),
         &iid_of<IAsyncOperation<platform::IBluetoothDevice*>>},
        {"B2E8CDD1-66AA-5892-85A3-8F0B165E43FC", Generic(completedHandler, {bluetoothDevice}),
         &iid_of<AsyncOperationCompletedHandler<platform::IBluetoothDevice*>>},
        {"375F9D67-74A2-5F91-A11D-169093718D41", Generic(asyncOperation, {bluetoothLEDevice}),
         &iid_of<IAsyncOperation<platform::IBluetoothLEDevice*>>},
        {"9156B79F-C54A-5277-8F8B-D2CC43C7E004", Generic(completedHandler, {bluetoothLEDevice}),
         &iid_of<AsyncOperationCompletedHandler<platform::IBluetoothLEDevice*>>},
        {"46FCE70C-6C07-5A3A-B775-26F99402553F", Generic(asyncOperation, {bluetoothAdapter}),
         &iid_of<IAsyncOperation<platform::IBluetoothAdapter*>>},
        {"10A10A88-90E0-511A-9A08-D75FEB52A19F", Generic(completedHandler, {bluetoothAdapter}),
         &iid_of<AsyncOperationCompletedHandler<platform::IBluetoothAdapter*>>},
        {"EAC62C40-8DBC-5854-8BA0-B7B9940E7389", Generic(asyncOperation, {radio}),
         &iid_of<IAsyncOperation<platform::IRadio*>>},
        {"8A5C7E3A-80E2-585B-8630-7A8E777F0354", Generic(completedHandler, {radio}),
         &iid_of<AsyncOperationCompletedHandler<platform::IRadio*>>},
        {"040B54A1-203E-58F5-943F-C1CCA86BD532", Generic(asyncOperation, {Generic(vectorView, {radio})}),
         &iid_of<IAsyncOperation<IVectorView<platform::IRadio*>*>>},
        {"D30691E6-60A0-59C9-8965-5BBE282E8208", Generic(completedHandler, {Generic(vectorView, {radio})}),
         &iid_of<AsyncOperationCompletedHandler<IVectorView<platform::IRadio*>*>>},
        {"65066C36-090B-5466-B8E5-E7565DC34175", Generic(vectorView, {radio}), &iid_of<IVectorView<platform::IRadio*>>},
        {"E82500AF-1F53-504E-B8BE-DAC4FBB69084", Generic(iterable, {radio}), &iid_of<IIterable<platform::IRadio*>>},
        {"CF37EDE7-EAEC-5B8F-AD31-4D51ABD9DB05", Generic(iterator, {radio}), &iid_of<IIterator<platform::IRadio*>>},
        {"21FB30EF-072F-502C-9898-D0C3B2CD9AC5", Generic(asyncOperation, {radioAccess}),
         &iid_of<IAsyncOperation<RadioAccessStatus>>},
        {"BD248E73-F05F-574C-AE3D-9B95C4BF282A", Generic(completedHandler, {radioAccess}),
         &iid_of<AsyncOperationCompletedHandler<RadioAccessStatus>>},
        {"C00BC2F2-A7F8-5F3F-80D1-2808EF6BCA10", Generic(asyncOperation, {deviceAccess}),
         &iid_of<IAsyncOperation<DeviceAccessStatus>>},
        {"EE154D83-805B-53E8-8469-90715036D013", Generic(completedHandler, {deviceAccess}),
         &iid_of<AsyncOperationCompletedHandler<DeviceAccessStatus>>},
        {"DB56CE1C-5E9F-5138-9227-B1A66D60BC1B", Generic(typedEventHandler, {bluetoothDevice, object}),
         &iid_of<BluetoothDeviceHandler>},
        {"A90661E2-372E-5D1E-BBBB-B8A2CE0E7C4D", Generic(typedEventHandler, {bluetoothLEDevice, object}),
         &iid_of<BluetoothLEDeviceHandler>},
        {"FC6AA329-B586-5EBB-9E85-3F6B84EBDF18", Generic(typedEventHandler, {radio, object}), &iid_of<RadioHandler>},
    };

    Parameterised const ofDevices[] = {
        {"07FAA053-EB2F-5CBA-B25B-D9D57BE6715F", Generic(asyncOperation, {device}), &iid_of<DeviceOperation>},
        {"BB483DF2-7BB6-5923-A28D-8342EC30046B", Generic(completedHandler, {device}), &iid_of<DeviceCompletedHandler>},
        {"45180254-082E-5274-B2E7-AC0517F44D07", Generic(asyncOperation, {devices}), &iid_of<DevicesOperation>},
        {"4A458732-527E-5C73-9A68-A73DA370F782", Generic(completedHandler, {devices}),
         &iid_of<DevicesCompletedHandler>},
        {"DD9F8A5D-EC98-5F4B-A3EA-9C8B5AD53C4B", Generic(iterable, {device}),
         &iid_of<IIterable<platform::IDeviceInformation*>>},
        {"6F85D843-E8AB-5B46-85D7-327C58D18712", Generic(iterator, {device}),
         &iid_of<IIterator<platform::IDeviceInformation*>>},
        {"0FCA458F-AD7F-5259-A74D-25E8FEF48C1B", Generic(vector, {device}),
         &iid_of<IVector<platform::IDeviceInformation*>>},
        {"E170688F-3495-5BF6-AAB5-9CAC17E0F10F", Generic(vectorView, {device}),
         &iid_of<IVectorView<platform::IDeviceInformation*>>},
        {"9C5711E3-3519-5581-9FA6-E25E181DF9A1", Generic(observableVector, {device}),
         &iid_of<platform::IObservableVector<platform::IDeviceInformation*>>},
        {"9217758C-E007-50D8-8983-5B116DD0426E", Generic(vectorChangedHandler, {device}),
         &iid_of<VectorChangedEventHandler<platform::IDeviceInformation*>>},
    };

    Parameterised const ofValues[] = {
        {"3C00FD60-2950-5939-A21A-2D12C5A01B8A", Generic(reference, {"b1"}), &iid_of<IReference<boolean>>},
        {"E5198CC8-2873-55F5-B0A1-84FF9E4AAD62", Generic(reference, {"u1"}), &iid_of<IReference<UInt8>>},
        {"5AB7D2C3-6B62-5E71-A4B6-2D49C4F238FD", Generic(reference, {"u2"}), &iid_of<IReference<UINT16>>},
        {"548CEFBD-BC8A-5FA0-8DF2-957440FC8BF4", Generic(reference, {"i4"}), &iid_of<IReference<INT32>>},
        {"513EF3AF-E784-5325-A91E-97C2B8111CF3", Generic(reference, {"u4"}), &iid_of<IReference<UINT32>>},
        {"FD416DFB-2A07-52EB-AAE3-DFCE14116C05", Generic(reference, {text}), &iid_of<IReference<HSTRING>>},
        {"7D50F649-632C-51F9-849A-EE49428933EA", Generic(reference, {"g16"}), &iid_of<IReference<GUID>>},
        {"5541D8A7-497C-5AA4-86FC-7713ADBF2A2C", Generic(reference, {"struct(Windows.Foundation.DateTime;i8)"}),
         &iid_of<IReference<platform::DateTime>>},
        {"2AF22683-3734-56D0-A60E-688CC85D1619", Generic(referenceArray, {"u1"}), &iid_of<IReferenceArray<UInt8>>},
        {"0385688E-E3C7-5C5E-A389-5524EDE349F1", Generic(referenceArray, {text}), &iid_of<IReferenceArray<HSTRING>>},
        {"EECF9838-C1C2-5B4A-976F-CEC261AE1D55", Generic(referenceArray, {"g16"}), &iid_of<IReferenceArray<GUID>>},
    };
} // namespace

TEST_P(AbiIdentifier, IsThePlatforms)
{
    EXPECT_EQ(TextOf(GetParam().id), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Basic, AbiIdentifier, testing::ValuesIn(basic));

INSTANTIATE_TEST_SUITE_P(Enumeration, AbiIdentifier, testing::ValuesIn(enumeration));

INSTANTIATE_TEST_SUITE_P(Bluetooth, AbiIdentifier, testing::ValuesIn(bluetooth));

INSTANTIATE_TEST_SUITE_P(Streams, AbiIdentifier, testing::ValuesIn(streams));

TEST_P(AbiParameterisedIdentifier, FollowsFromItsSignature)
{
    EXPECT_EQ(IdentifierOf(GetParam().signature), GetParam().identifier) << GetParam().signature;
    EXPECT_EQ(TextOf(*GetParam().id), GetParam().identifier);
}

INSTANTIATE_TEST_SUITE_P(Declared, AbiParameterisedIdentifier, testing::ValuesIn(declared));

INSTANTIATE_TEST_SUITE_P(Devices, AbiParameterisedIdentifier, testing::ValuesIn(ofDevices));

INSTANTIATE_TEST_SUITE_P(Values, AbiParameterisedIdentifier, testing::ValuesIn(ofValues));

INSTANTIATE_TEST_SUITE_P(Bluetooth, AbiParameterisedIdentifier, testing::ValuesIn(ofBluetooth));

INSTANTIATE_TEST_SUITE_P(Streams, AbiParameterisedIdentifier, testing::ValuesIn(ofStreams));
