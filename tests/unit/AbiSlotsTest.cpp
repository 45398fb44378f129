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
    using S = IBluetoothAdapterStatics;
    using I = platform::IBluetoothAdapter;
    ExpectSlots(6, 8, &S::GetDeviceSelector, &S::FromIdAsync, &S::GetDefaultAsync);
    ExpectSlots(6, 13, &I::get_DeviceId, &I::get_BluetoothAddress, &I::get_IsClassicSupported,
                &I::get_IsLowEnergySupported, &I::get_IsPeripheralRoleSupported, &I::get_IsCentralRoleSupported,
                &I::get_IsAdvertisementOffloadSupported, &I::GetRadioAsync);
}

TEST(AbiSlots, Radio)
{
    using I = platform::IRadio;
    ExpectSlots(6, 11, &I::SetStateAsync, &I::add_StateChanged, &I::remove_StateChanged, &I::get_State, &I::get_Name,
                &I::get_Kind);
}
