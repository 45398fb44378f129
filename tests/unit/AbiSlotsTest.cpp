// The order of the virtual functions is the platform's: calls each method against a table of functions that
// answer with their own slot.
#include "platform/abi/Bluetooth.h"
#include "platform/abi/Enumeration.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

using namespace platform;

namespace
{
    using Function = HRESULT(STDMETHODCALLTYPE*)(void*);

    template <std::size_t Slot>
    HRESULT STDMETHODCALLTYPE AnswerSlot(void*)
    {
        return static_cast<HRESULT>(Slot);
    }

    template <std::size_t... Slots>
    constexpr auto TableOf(std::index_sequence<Slots...>)
    {
        return std::array<Function, sizeof...(Slots)>{&AnswerSlot<Slots>...};
    }

    constexpr auto table = TableOf(std::make_index_sequence<64>());

    // The call leaves the method's arguments out: in this calling convention only the caller knows of them.
    template <typename Interface, typename Method>
    HRESULT SlotOf(Method Interface::*method)
    {
        using WithoutArguments = HRESULT (STDMETHODCALLTYPE Interface::*)();
        // The compiler sees no one read the table through an Interface: volatile keeps it from dropping it.
        struct
        {
            Function const* volatile functions;
        } object{table.data()};
        auto* const volatile called = reinterpret_cast<Interface*>(&object);
        return (called->*std::bit_cast<WithoutArguments>(method))();
    }

    template <typename... Methods>
    void ExpectSlots(HRESULT first, HRESULT last, Methods... methods)
    {
        std::vector<HRESULT> expected(static_cast<std::size_t>(last - first + 1));
        std::iota(expected.begin(), expected.end(), first);
        EXPECT_EQ(std::vector{SlotOf(methods)...}, expected);
    }
} // namespace

TEST(AbiSlots, Unknown)
{
    // Some headers overload QueryInterface.
    using I = ::IUnknown;
    auto const queryInterface = static_cast<HRESULT (STDMETHODCALLTYPE I::*)(REFIID, void**)>(&I::QueryInterface);
    EXPECT_EQ(SlotOf(queryInterface), 0);
    EXPECT_EQ(SlotOf(&I::AddRef), 1);
    EXPECT_EQ(SlotOf(&I::Release), 2);
}

TEST(AbiSlots, Inspectable)
{
    using I = ::IInspectable;
    ExpectSlots(3, 5, &I::GetIids, &I::GetRuntimeClassName, &I::GetTrustLevel);
}

TEST(AbiSlots, ActivationFactory)
{
    ExpectSlots(6, 6, &::IActivationFactory::ActivateInstance);
}

TEST(AbiSlots, Marshal)
{
    using I = ::IMarshal;
    ExpectSlots(3, 8, &I::GetUnmarshalClass, &I::GetMarshalSizeMax, &I::MarshalInterface, &I::UnmarshalInterface,
                &I::ReleaseMarshalData, &I::DisconnectObject);
}

TEST(AbiSlots, WeakReference)
{
    ExpectSlots(3, 3, &platform::IWeakReference::Resolve);
    ExpectSlots(3, 3, &platform::IWeakReferenceSource::GetWeakReference);
}

TEST(AbiSlots, ContextCallback)
{
    ExpectSlots(3, 3, &platform::IContextCallback::ContextCallback);
}

TEST(AbiSlots, AsyncInfo)
{
    using I = platform::IAsyncInfo;
    ExpectSlots(6, 10, &I::get_Id, &I::get_Status, &I::get_ErrorCode, &I::Cancel, &I::Close);
}

TEST(AbiSlots, AsyncOperation)
{
    using I = PairingOperation;
    ExpectSlots(6, 8, &I::put_Completed, &I::get_Completed, &I::GetResults);
}

TEST(AbiSlots, AsyncOperationWithProgress)
{
    using I = ReadOperation;
    ExpectSlots(6, 10, &I::put_Progress, &I::get_Progress, &I::put_Completed, &I::get_Completed, &I::GetResults);
    ExpectSlots(3, 3, &ReadProgressHandler::Invoke);
    ExpectSlots(3, 3, &ReadCompletedHandler::Invoke);
}

TEST(AbiSlots, Streams)
{
    using I = IRandomAccessStream;
    using Buffer = platform::IBuffer;
    ExpectSlots(6, 14, &I::get_Size, &I::put_Size, &I::GetInputStreamAt, &I::GetOutputStreamAt, &I::get_Position,
                &I::Seek, &I::CloneStream, &I::get_CanRead, &I::get_CanWrite);
    ExpectSlots(6, 6, &IInputStream::ReadAsync);
    ExpectSlots(6, 7, &IOutputStream::WriteAsync, &IOutputStream::FlushAsync);
    ExpectSlots(6, 6, &IContentTypeProvider::get_ContentType);
    ExpectSlots(6, 8, &Buffer::get_Capacity, &Buffer::get_Length, &Buffer::put_Length);
    ExpectSlots(3, 3, &platform::IBufferByteAccess::Buffer);
}

TEST(AbiSlots, Delegates)
{
    ExpectSlots(3, 3, &PairingCompletedHandler::Invoke);
    ExpectSlots(3, 3, &UnpairingCompletedHandler::Invoke);
    ExpectSlots(3, 3, &AddedHandler::Invoke);
    ExpectSlots(3, 3, &UpdateHandler::Invoke);
    ExpectSlots(3, 3, &WatcherHandler::Invoke);
    ExpectSlots(3, 3, &PairingRequestedHandler::Invoke);
}

TEST(AbiSlots, ClosableAndDeferral)
{
    ExpectSlots(6, 6, &IClosable::Close);
    ExpectSlots(6, 6, &IDeferral::Complete);
}

TEST(AbiSlots, Reference)
{
    ExpectSlots(6, 6, &IReference<INT32>::get_Value);
    ExpectSlots(6, 6, &IReference<UInt8>::get_Value);
    ExpectSlots(6, 6, &IReferenceArray<HSTRING>::get_Value);
    ExpectSlots(6, 6, &IReferenceArray<UInt8>::get_Value);
}

TEST(AbiSlots, PropertyValue)
{
    using I = IPropertyValue;
    ExpectSlots(6, 25, &I::get_Type, &I::get_IsNumericScalar, &I::GetUInt8, &I::GetInt16, &I::GetUInt16, &I::GetInt32,
                &I::GetUInt32, &I::GetInt64, &I::GetUInt64, &I::GetSingle, &I::GetDouble, &I::GetChar16, &I::GetBoolean,
                &I::GetString, &I::GetGuid, &I::GetDateTime, &I::GetTimeSpan, &I::GetPoint, &I::GetSize, &I::GetRect);
    ExpectSlots(26, 44, &I::GetUInt8Array, &I::GetInt16Array, &I::GetUInt16Array, &I::GetInt32Array, &I::GetUInt32Array,
                &I::GetInt64Array, &I::GetUInt64Array, &I::GetSingleArray, &I::GetDoubleArray, &I::GetChar16Array,
                &I::GetBooleanArray, &I::GetStringArray, &I::GetInspectableArray, &I::GetGuidArray,
                &I::GetDateTimeArray, &I::GetTimeSpanArray, &I::GetPointArray, &I::GetSizeArray, &I::GetRectArray);
}

TEST(AbiSlots, Iteration)
{
    using I = IIterator<HSTRING>;
    ExpectSlots(6, 6, &IIterable<HSTRING>::First);
    ExpectSlots(6, 9, &I::get_Current, &I::get_HasCurrent, &I::MoveNext, &I::GetMany);
}

TEST(AbiSlots, Vectors)
{
    using View = IVectorView<HSTRING>;
    using I = IVector<HSTRING>;
    ExpectSlots(6, 9, &View::GetAt, &View::get_Size, &View::IndexOf, &View::GetMany);
    ExpectSlots(6, 17, &I::GetAt, &I::get_Size, &I::GetView, &I::IndexOf, &I::SetAt, &I::InsertAt, &I::RemoveAt,
                &I::Append, &I::RemoveAtEnd, &I::Clear, &I::GetMany, &I::ReplaceAll);
}

TEST(AbiSlots, ObservableVector)
{
    using I = platform::IObservableVector<platform::IDeviceInformation*>;
    using Args = IVectorChangedEventArgs;
    ExpectSlots(6, 7, &I::add_VectorChanged, &I::remove_VectorChanged);
    ExpectSlots(6, 7, &Args::get_CollectionChange, &Args::get_Index);
    ExpectSlots(3, 3, &VectorChangedEventHandler<platform::IDeviceInformation*>::Invoke);
}

TEST(AbiSlots, MapView)
{
    using I = PropertyMap;
    using Pair = IKeyValuePair<HSTRING, ::IInspectable*>;
    ExpectSlots(6, 9, &I::Lookup, &I::get_Size, &I::HasKey, &I::Split);
    ExpectSlots(6, 7, &Pair::get_Key, &Pair::get_Value);
}

TEST(AbiSlots, DeviceInformationStatics)
{
    using I = IDeviceInformationStatics;
    using I2 = IDeviceInformationStatics2;
    ExpectSlots(6, 15, &I::CreateFromIdAsync, &I::CreateFromIdAsyncAdditionalProperties, &I::FindAllAsync,
                &I::FindAllAsyncDeviceClass, &I::FindAllAsyncAqsFilter,
                &I::FindAllAsyncAqsFilterAndAdditionalProperties, &I::CreateWatcher, &I::CreateWatcherDeviceClass,
                &I::CreateWatcherAqsFilter, &I::CreateWatcherAqsFilterAndAdditionalProperties);
    ExpectSlots(6, 9, &I2::GetAqsFilterFromDeviceClass, &I2::CreateFromIdAsyncWithKindAndAdditionalProperties,
                &I2::FindAllAsyncWithKindAqsFilterAndAdditionalProperties,
                &I2::CreateWatcherWithKindAqsFilterAndAdditionalProperties);
}

TEST(AbiSlots, DeviceInformation)
{
    using I = IDeviceInformation;
    using I2 = IDeviceInformation2;
    ExpectSlots(6, 14, &I::get_Id, &I::get_Name, &I::get_IsEnabled, &I::get_IsDefault, &I::get_EnclosureLocation,
                &I::get_Properties, &I::Update, &I::GetThumbnailAsync, &I::GetGlyphThumbnailAsync);
    ExpectSlots(6, 7, &I2::get_Kind, &I2::get_Pairing);
}

TEST(AbiSlots, DeviceInformationUpdate)
{
    using I = IDeviceInformationUpdate;
    ExpectSlots(6, 7, &I::get_Id, &I::get_Properties);
    ExpectSlots(6, 6, &IDeviceInformationUpdate2::get_Kind);
}

TEST(AbiSlots, DeviceInformationPairing)
{
    using I = IDeviceInformationPairing;
    using I2 = IDeviceInformationPairing2;
    ExpectSlots(6, 9, &I::get_IsPaired, &I::get_CanPair, &I::PairAsync, &I::PairWithProtectionLevelAsync);
    ExpectSlots(6, 9, &I2::get_ProtectionLevel, &I2::get_Custom, &I2::PairWithProtectionLevelAndSettingsAsync,
                &I2::UnpairAsync);
}

TEST(AbiSlots, DeviceInformationPairingStatics)
{
    using I2 = IDeviceInformationPairingStatics2;
    ExpectSlots(6, 6, &IDeviceInformationPairingStatics::TryRegisterForAllInboundPairingRequests);
    ExpectSlots(6, 6, &I2::TryRegisterForAllInboundPairingRequestsWithProtectionLevel);
}

TEST(AbiSlots, DeviceInformationCustomPairing)
{
    using I = IDeviceInformationCustomPairing;
    ExpectSlots(6, 10, &I::PairAsync, &I::PairWithProtectionLevelAsync, &I::PairWithProtectionLevelAndSettingsAsync,
                &I::add_PairingRequested, &I::remove_PairingRequested);
}

TEST(AbiSlots, DevicePairingRequestedEventArgs)
{
    using I = IDevicePairingRequestedEventArgs;
    ExpectSlots(6, 11, &I::get_DeviceInformation, &I::get_PairingKind, &I::get_Pin, &I::Accept, &I::AcceptWithPin,
                &I::GetDeferral);
    ExpectSlots(6, 6, &IDevicePairingRequestedEventArgs2::AcceptWithPasswordCredential);
}

TEST(AbiSlots, Results)
{
    using I = IDevicePairingResult;
    ExpectSlots(6, 7, &I::get_Status, &I::get_ProtectionLevelUsed);
    ExpectSlots(6, 6, &IDeviceUnpairingResult::get_Status);
}

TEST(AbiSlots, DeviceWatcher)
{
    using I = IDeviceWatcher;
    ExpectSlots(6, 18, &I::add_Added, &I::remove_Added, &I::add_Updated, &I::remove_Updated, &I::add_Removed,
                &I::remove_Removed, &I::add_EnumerationCompleted, &I::remove_EnumerationCompleted, &I::add_Stopped,
                &I::remove_Stopped, &I::get_Status, &I::Start, &I::Stop);
    ExpectSlots(6, 6, &IDeviceWatcher2::GetBackgroundTrigger);
}

TEST(AbiSlots, BluetoothAdapter)
{
    using S = platform::IBluetoothAdapterStatics;
    using I = platform::IBluetoothAdapter;
    using I2 = platform::IBluetoothAdapter2;
    using I3 = platform::IBluetoothAdapter3;
    ExpectSlots(6, 8, &S::GetDeviceSelector, &S::FromIdAsync, &S::GetDefaultAsync);
    ExpectSlots(6, 13, &I::get_DeviceId, &I::get_BluetoothAddress, &I::get_IsClassicSupported,
                &I::get_IsLowEnergySupported, &I::get_IsPeripheralRoleSupported, &I::get_IsCentralRoleSupported,
                &I::get_IsAdvertisementOffloadSupported, &I::GetRadioAsync);
    ExpectSlots(6, 7, &I2::get_AreClassicSecureConnectionsSupported, &I2::get_AreLowEnergySecureConnectionsSupported);
    ExpectSlots(6, 7, &I3::get_IsExtendedAdvertisingSupported, &I3::get_MaxAdvertisementDataLength);
}

TEST(AbiSlots, BluetoothDevice)
{
    using S = platform::IBluetoothDeviceStatics;
    using S2 = platform::IBluetoothDeviceStatics2;
    using I = platform::IBluetoothDevice;
    using I2 = platform::IBluetoothDevice2;
    using I3 = platform::IBluetoothDevice3;
    using I4 = platform::IBluetoothDevice4;
    using I5 = platform::IBluetoothDevice5;
    ExpectSlots(6, 9, &S::FromIdAsync, &S::FromHostNameAsync, &S::FromBluetoothAddressAsync, &S::GetDeviceSelector);
    ExpectSlots(6, 10, &S2::GetDeviceSelectorFromPairingState, &S2::GetDeviceSelectorFromConnectionStatus,
                &S2::GetDeviceSelectorFromDeviceName, &S2::GetDeviceSelectorFromBluetoothAddress,
                &S2::GetDeviceSelectorFromClassOfDevice);
    ExpectSlots(6, 19, &I::get_DeviceId, &I::get_HostName, &I::get_Name, &I::get_ClassOfDevice, &I::get_SdpRecords,
                &I::get_RfcommServices, &I::get_ConnectionStatus, &I::get_BluetoothAddress, &I::add_NameChanged,
                &I::remove_NameChanged, &I::add_SdpRecordsChanged, &I::remove_SdpRecordsChanged,
                &I::add_ConnectionStatusChanged, &I::remove_ConnectionStatusChanged);
    ExpectSlots(6, 6, &I2::get_DeviceInformation);
    ExpectSlots(6, 11, &I3::get_DeviceAccessInformation, &I3::RequestAccessAsync, &I3::GetRfcommServicesAsync,
                &I3::GetRfcommServicesWithCacheModeAsync, &I3::GetRfcommServicesForIdAsync,
                &I3::GetRfcommServicesForIdWithCacheModeAsync);
    ExpectSlots(6, 6, &I4::get_BluetoothDeviceId);
    ExpectSlots(6, 6, &I5::get_WasSecureConnectionUsedForPairing);
}

TEST(AbiSlots, BluetoothLEDevice)
{
    using S = platform::IBluetoothLEDeviceStatics;
    using S2 = platform::IBluetoothLEDeviceStatics2;
    using I = platform::IBluetoothLEDevice;
    using I2 = platform::IBluetoothLEDevice2;
    using I3 = platform::IBluetoothLEDevice3;
    using I4 = platform::IBluetoothLEDevice4;
    using I5 = platform::IBluetoothLEDevice5;
    ExpectSlots(6, 8, &S::FromIdAsync, &S::FromBluetoothAddressAsync, &S::GetDeviceSelector);
    ExpectSlots(6, 12, &S2::GetDeviceSelectorFromPairingState, &S2::GetDeviceSelectorFromConnectionStatus,
                &S2::GetDeviceSelectorFromDeviceName, &S2::GetDeviceSelectorFromBluetoothAddress,
                &S2::GetDeviceSelectorFromBluetoothAddressWithBluetoothAddressType,
                &S2::GetDeviceSelectorFromAppearance, &S2::FromBluetoothAddressWithBluetoothAddressTypeAsync);
    ExpectSlots(6, 17, &I::get_DeviceId, &I::get_Name, &I::get_GattServices, &I::get_ConnectionStatus,
                &I::get_BluetoothAddress, &I::GetGattService, &I::add_NameChanged, &I::remove_NameChanged,
                &I::add_GattServicesChanged, &I::remove_GattServicesChanged, &I::add_ConnectionStatusChanged,
                &I::remove_ConnectionStatusChanged);
    ExpectSlots(6, 8, &I2::get_DeviceInformation, &I2::get_Appearance, &I2::get_BluetoothAddressType);
    ExpectSlots(6, 11, &I3::get_DeviceAccessInformation, &I3::RequestAccessAsync, &I3::GetGattServicesAsync,
                &I3::GetGattServicesWithCacheModeAsync, &I3::GetGattServicesForUuidAsync,
                &I3::GetGattServicesForUuidWithCacheModeAsync);
    ExpectSlots(6, 6, &I4::get_BluetoothDeviceId);
    ExpectSlots(6, 6, &I5::get_WasSecureConnectionUsedForPairing);
}

TEST(AbiSlots, BluetoothValues)
{
    using Id = platform::IBluetoothDeviceId;
    using IdStatics = platform::IBluetoothDeviceIdStatics;
    using Class = platform::IBluetoothClassOfDevice;
    using ClassStatics = platform::IBluetoothClassOfDeviceStatics;
    using Appearance = platform::IBluetoothLEAppearance;
    ExpectSlots(6, 8, &Id::get_Id, &Id::get_IsClassicDevice, &Id::get_IsLowEnergyDevice);
    ExpectSlots(6, 6, &IdStatics::FromId);
    ExpectSlots(6, 9, &Class::get_RawValue, &Class::get_MajorClass, &Class::get_MinorClass,
                &Class::get_ServiceCapabilities);
    ExpectSlots(6, 7, &ClassStatics::FromRawValue, &ClassStatics::FromParts);
    ExpectSlots(6, 8, &Appearance::get_RawValue, &Appearance::get_Category, &Appearance::get_SubCategory);
}

TEST(AbiSlots, Radio)
{
    using S = platform::IRadioStatics;
    using I = platform::IRadio;
    ExpectSlots(6, 9, &S::GetRadiosAsync, &S::GetDeviceSelector, &S::FromIdAsync, &S::RequestAccessAsync);
    ExpectSlots(6, 11, &I::SetStateAsync, &I::add_StateChanged, &I::remove_StateChanged, &I::get_State, &I::get_Name,
                &I::get_Kind);
}

TEST(AbiSlots, BluetoothDelegates)
{
    ExpectSlots(3, 3, &BluetoothDeviceHandler::Invoke);
    ExpectSlots(3, 3, &BluetoothLEDeviceHandler::Invoke);
    ExpectSlots(3, 3, &RadioHandler::Invoke);
}
