// Windows.Devices.Enumeration at the binary level: the interfaces that finding, pairing and unpairing
// a Bluetooth device need. Pointers to types that nobody here touches stay untyped; their slots count.
#pragma once

#include "platform/abi/Collections.h"
#include "platform/abi/EnumerationValues.h"
#include "platform/abi/Streams.h"

namespace platform
{
    struct IDeviceInformation;
    struct IDeviceInformationUpdate;
    struct IDevicePairingResult;
    struct IDeviceUnpairingResult;
    struct IDeviceWatcher;
    struct IDeviceInformationPairing;
    struct IDeviceInformationCustomPairing;
    struct IDevicePairingRequestedEventArgs;

    using AddedHandler = TypedEventHandler<IDeviceWatcher*, IDeviceInformation*>;
    using UpdateHandler = TypedEventHandler<IDeviceWatcher*, IDeviceInformationUpdate*>; // Updated and Removed
    using WatcherHandler = TypedEventHandler<IDeviceWatcher*, ::IInspectable*>; // EnumerationCompleted and Stopped
    using PairingRequestedHandler =
        TypedEventHandler<IDeviceInformationCustomPairing*, IDevicePairingRequestedEventArgs*>;
    using PairingOperation = IAsyncOperation<IDevicePairingResult*>;
    using PairingCompletedHandler = AsyncOperationCompletedHandler<IDevicePairingResult*>;
    using UnpairingOperation = IAsyncOperation<IDeviceUnpairingResult*>;
    using UnpairingCompletedHandler = AsyncOperationCompletedHandler<IDeviceUnpairingResult*>;
    using DeviceOperation = IAsyncOperation<IDeviceInformation*>;
    using DeviceCompletedHandler = AsyncOperationCompletedHandler<IDeviceInformation*>;
    using DeviceCollection = IVectorView<IDeviceInformation*>; // the default interface of the collection's class
    using DevicesOperation = IAsyncOperation<DeviceCollection*>;
    using DevicesCompletedHandler = AsyncOperationCompletedHandler<DeviceCollection*>;
    using DeviceThumbnail = IRandomAccessStreamWithContentType; // the default interface of that class
    using ThumbnailOperation = IAsyncOperation<DeviceThumbnail*>;
    using ThumbnailCompletedHandler = AsyncOperationCompletedHandler<DeviceThumbnail*>;
    using PropertyMap = IMapView<HSTRING, ::IInspectable*>;

    struct IDeviceInformationStatics : ::IInspectable
    {
        static constexpr GUID iid{0xC17F100E, 0x3A46, 0x4A78, {0x80, 0x13, 0x76, 0x9D, 0xC9, 0xB9, 0x73, 0x90}};
        virtual HRESULT STDMETHODCALLTYPE CreateFromIdAsync(HSTRING id, DeviceOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE CreateFromIdAsyncAdditionalProperties(HSTRING id,
                                                                                IIterable<HSTRING>* properties,
                                                                                DeviceOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE FindAllAsync(DevicesOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE FindAllAsyncDeviceClass(INT32 deviceClass, DevicesOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE FindAllAsyncAqsFilter(HSTRING filter, DevicesOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE FindAllAsyncAqsFilterAndAdditionalProperties(
            HSTRING filter, IIterable<HSTRING>* properties, DevicesOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE CreateWatcher(IDeviceWatcher** watcher) = 0;
        virtual HRESULT STDMETHODCALLTYPE CreateWatcherDeviceClass(INT32 deviceClass, IDeviceWatcher** watcher) = 0;
        virtual HRESULT STDMETHODCALLTYPE CreateWatcherAqsFilter(HSTRING filter, IDeviceWatcher** watcher) = 0;
        virtual HRESULT STDMETHODCALLTYPE CreateWatcherAqsFilterAndAdditionalProperties(HSTRING filter,
                                                                                        IIterable<HSTRING>* properties,
                                                                                        IDeviceWatcher** watcher) = 0;
    };

    struct IDeviceInformationStatics2 : ::IInspectable
    {
        static constexpr GUID iid{0x493B4F34, 0xA84F, 0x45FD, {0x91, 0x67, 0x15, 0xD1, 0xCB, 0x1B, 0xD1, 0xF9}};
        virtual HRESULT STDMETHODCALLTYPE GetAqsFilterFromDeviceClass(INT32 deviceClass, HSTRING* filter) = 0;
        virtual HRESULT STDMETHODCALLTYPE CreateFromIdAsyncWithKindAndAdditionalProperties(
            HSTRING id, IIterable<HSTRING>* properties, DeviceInformationKind kind, DeviceOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE FindAllAsyncWithKindAqsFilterAndAdditionalProperties(
            HSTRING filter, IIterable<HSTRING>* properties, DeviceInformationKind kind,
            DevicesOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE CreateWatcherWithKindAqsFilterAndAdditionalProperties(
            HSTRING filter, IIterable<HSTRING>* properties, DeviceInformationKind kind, IDeviceWatcher** watcher) = 0;
    };

    struct IDeviceInformation : ::IInspectable
    {
        static constexpr GUID iid{0xABA0FB95, 0x4398, 0x489D, {0x8E, 0x44, 0xE6, 0x13, 0x09, 0x27, 0x01, 0x1F}};
        virtual HRESULT STDMETHODCALLTYPE get_Id(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Name(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsEnabled(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsDefault(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_EnclosureLocation(void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Properties(PropertyMap** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE Update(IDeviceInformationUpdate* update) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetThumbnailAsync(ThumbnailOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetGlyphThumbnailAsync(ThumbnailOperation** operation) = 0;
    };

    struct IDeviceInformation2 : ::IInspectable
    {
        static constexpr GUID iid{0xF156A638, 0x7997, 0x48D9, {0xA1, 0x0C, 0x26, 0x9D, 0x46, 0x53, 0x3F, 0x48}};
        virtual HRESULT STDMETHODCALLTYPE get_Kind(DeviceInformationKind* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Pairing(IDeviceInformationPairing** value) = 0;
    };

    struct IDeviceInformationUpdate : ::IInspectable
    {
        static constexpr GUID iid{0x8F315305, 0xD972, 0x44B7, {0xA3, 0x7E, 0x9E, 0x82, 0x2C, 0x78, 0x21, 0x3B}};
        virtual HRESULT STDMETHODCALLTYPE get_Id(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Properties(PropertyMap** value) = 0;
    };

    struct IDeviceInformationUpdate2 : ::IInspectable
    {
        static constexpr GUID iid{0x5D9D148C, 0xA873, 0x485E, {0xBA, 0xA6, 0xAA, 0x62, 0x07, 0x88, 0xE3, 0xCC}};
        virtual HRESULT STDMETHODCALLTYPE get_Kind(DeviceInformationKind* value) = 0;
    };

    struct IDeviceInformationPairing : ::IInspectable
    {
        static constexpr GUID iid{0x2C4769F5, 0xF684, 0x40D5, {0x84, 0x69, 0xE8, 0xDB, 0xAA, 0xB7, 0x04, 0x85}};
        virtual HRESULT STDMETHODCALLTYPE get_IsPaired(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_CanPair(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE PairAsync(PairingOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE PairWithProtectionLevelAsync(DevicePairingProtectionLevel level,
                                                                       PairingOperation** operation) = 0;
    };

    struct IDeviceInformationPairing2 : ::IInspectable
    {
        static constexpr GUID iid{0xF68612FD, 0x0AEE, 0x4328, {0x85, 0xCC, 0x1C, 0x74, 0x2B, 0xB1, 0x79, 0x0D}};
        virtual HRESULT STDMETHODCALLTYPE get_ProtectionLevel(DevicePairingProtectionLevel* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Custom(IDeviceInformationCustomPairing** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE PairWithProtectionLevelAndSettingsAsync(DevicePairingProtectionLevel level,
                                                                                  void* settings,
                                                                                  PairingOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE UnpairAsync(UnpairingOperation** operation) = 0;
    };

    struct IDeviceInformationPairingStatics : ::IInspectable
    {
        static constexpr GUID iid{0xE915C408, 0x36D4, 0x49A1, {0xBF, 0x13, 0x51, 0x41, 0x73, 0x79, 0x9B, 0x6B}};
        virtual HRESULT STDMETHODCALLTYPE TryRegisterForAllInboundPairingRequests(DevicePairingKinds kinds,
                                                                                  boolean* registered) = 0;
    };

    struct IDeviceInformationPairingStatics2 : ::IInspectable
    {
        static constexpr GUID iid{0x04DE5372, 0xB7B7, 0x476B, {0xA7, 0x4F, 0xC5, 0x83, 0x6A, 0x70, 0x4D, 0x98}};
        virtual HRESULT STDMETHODCALLTYPE TryRegisterForAllInboundPairingRequestsWithProtectionLevel(
            DevicePairingKinds kinds, DevicePairingProtectionLevel level, boolean* registered) = 0;
    };

    struct IDeviceInformationCustomPairing : ::IInspectable
    {
        static constexpr GUID iid{0x85138C02, 0x4EE6, 0x4914, {0x83, 0x70, 0x10, 0x7A, 0x39, 0x14, 0x4C, 0x0E}};
        virtual HRESULT STDMETHODCALLTYPE PairAsync(DevicePairingKinds kinds, PairingOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE PairWithProtectionLevelAsync(DevicePairingKinds kinds,
                                                                       DevicePairingProtectionLevel level,
                                                                       PairingOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE PairWithProtectionLevelAndSettingsAsync(DevicePairingKinds kinds,
                                                                                  DevicePairingProtectionLevel level,
                                                                                  void* settings,
                                                                                  PairingOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_PairingRequested(PairingRequestedHandler* handler,
                                                               EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_PairingRequested(EventRegistrationToken token) = 0;
    };

    struct IDevicePairingRequestedEventArgs : ::IInspectable
    {
        static constexpr GUID iid{0xF717FC56, 0xDE6B, 0x487F, {0x83, 0x76, 0x01, 0x80, 0xAC, 0xA6, 0x99, 0x63}};
        virtual HRESULT STDMETHODCALLTYPE get_DeviceInformation(IDeviceInformation** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_PairingKind(DevicePairingKinds* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Pin(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE Accept() = 0;
        virtual HRESULT STDMETHODCALLTYPE AcceptWithPin(HSTRING pin) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeferral(IDeferral** deferral) = 0;
    };

    struct IDevicePairingRequestedEventArgs2 : ::IInspectable
    {
        static constexpr GUID iid{0xC83752D9, 0xE4D3, 0x4DB0, {0xA3, 0x60, 0xA1, 0x05, 0xE4, 0x37, 0xDB, 0xDC}};
        virtual HRESULT STDMETHODCALLTYPE AcceptWithPasswordCredential(void* credential) = 0;
    };

    struct IDevicePairingResult : ::IInspectable
    {
        static constexpr GUID iid{0x072B02BF, 0xDD95, 0x4025, {0x9B, 0x37, 0xDE, 0x51, 0xAD, 0xBA, 0x37, 0xB7}};
        virtual HRESULT STDMETHODCALLTYPE get_Status(DevicePairingResultStatus* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_ProtectionLevelUsed(DevicePairingProtectionLevel* value) = 0;
    };

    struct IDeviceUnpairingResult : ::IInspectable
    {
        static constexpr GUID iid{0x66F44AD3, 0x79D9, 0x444B, {0x92, 0xCF, 0xA9, 0x2E, 0xF7, 0x25, 0x71, 0xC7}};
        virtual HRESULT STDMETHODCALLTYPE get_Status(DeviceUnpairingResultStatus* value) = 0;
    };

    struct IDeviceWatcher : ::IInspectable
    {
        static constexpr GUID iid{0xC9EAB97D, 0x8F6B, 0x4F96, {0xA9, 0xF4, 0xAB, 0xC8, 0x14, 0xE2, 0x22, 0x71}};
        virtual HRESULT STDMETHODCALLTYPE add_Added(AddedHandler* handler, EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_Added(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_Updated(UpdateHandler* handler, EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_Updated(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_Removed(UpdateHandler* handler, EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_Removed(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_EnumerationCompleted(WatcherHandler* handler,
                                                                   EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_EnumerationCompleted(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_Stopped(WatcherHandler* handler, EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_Stopped(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Status(DeviceWatcherStatus* status) = 0;
        virtual HRESULT STDMETHODCALLTYPE Start() = 0;
        virtual HRESULT STDMETHODCALLTYPE Stop() = 0;
    };

    struct IDeviceWatcher2 : ::IInspectable
    {
        static constexpr GUID iid{0xFF08456E, 0xED14, 0x49E9, {0x9A, 0x69, 0x81, 0x17, 0xC5, 0x4A, 0xE9, 0x71}};
        virtual HRESULT STDMETHODCALLTYPE GetBackgroundTrigger(void* eventKinds, void** trigger) = 0;
    };

    template <>
    inline constexpr GUID iid_of<AddedHandler>{
        0x03C5A07B, 0x990C, 0x5D09, {0xB0, 0xB8, 0x57, 0x34, 0xEA, 0xA3, 0x82, 0x22}};
    template <>
    inline constexpr GUID iid_of<UpdateHandler>{
        0x906F1254, 0x79AD, 0x54FC, {0x93, 0xC4, 0xCD, 0xB9, 0x9B, 0x43, 0x78, 0x99}};
    template <>
    inline constexpr GUID iid_of<WatcherHandler>{
        0x9234630F, 0x1FF4, 0x54F6, {0x9E, 0x3F, 0xAC, 0x20, 0x36, 0x9B, 0x77, 0x25}};
    template <>
    inline constexpr GUID iid_of<PairingRequestedHandler>{
        0xFA65231F, 0x4178, 0x5DE1, {0xB2, 0xCC, 0x03, 0xE2, 0x2D, 0x77, 0x02, 0xB4}};
    template <>
    inline constexpr GUID iid_of<PairingOperation>{
        0x1002DB74, 0x8948, 0x591E, {0x81, 0x5D, 0xE4, 0x0B, 0x66, 0x75, 0x99, 0xA3}};
    template <>
    inline constexpr GUID iid_of<PairingCompletedHandler>{
        0x7EE0247F, 0x5F57, 0x5CB2, {0xB4, 0x0E, 0x18, 0xB5, 0xA2, 0x11, 0xD6, 0xC3}};
    template <>
    inline constexpr GUID iid_of<UnpairingOperation>{
        0x2BB4DF3D, 0xBD7E, 0x5FE0, {0x90, 0x20, 0x56, 0xDC, 0x0D, 0x30, 0xB9, 0x35}};
    template <>
    inline constexpr GUID iid_of<UnpairingCompletedHandler>{
        0x9BBE6EB9, 0xDB2D, 0x5160, {0xA2, 0x0C, 0xF0, 0xC2, 0x65, 0xF2, 0x0D, 0x8E}};
    template <>
    inline constexpr GUID iid_of<DeviceOperation>{
        0x07FAA053, 0xEB2F, 0x5CBA, {0xB2, 0x5B, 0xD9, 0xD5, 0x7B, 0xE6, 0x71, 0x5F}};
    template <>
    inline constexpr GUID iid_of<DeviceCompletedHandler>{
        0xBB483DF2, 0x7BB6, 0x5923, {0xA2, 0x8D, 0x83, 0x42, 0xEC, 0x30, 0x04, 0x6B}};
    template <>
    inline constexpr GUID iid_of<DevicesOperation>{
        0x45180254, 0x082E, 0x5274, {0xB2, 0xE7, 0xAC, 0x05, 0x17, 0xF4, 0x4D, 0x07}};
    template <>
    inline constexpr GUID iid_of<DevicesCompletedHandler>{
        0x4A458732, 0x527E, 0x5C73, {0x9A, 0x68, 0xA7, 0x3D, 0xA3, 0x70, 0xF7, 0x82}};
    template <>
    inline constexpr GUID iid_of<ThumbnailOperation>{
        0xBAC083A3, 0x3A19, 0x5072, {0x9D, 0x90, 0x13, 0x33, 0x23, 0xA0, 0x49, 0xBA}};
    template <>
    inline constexpr GUID iid_of<ThumbnailCompletedHandler>{
        0x86D455B2, 0xD795, 0x554C, {0x9C, 0x31, 0xBF, 0x65, 0x39, 0x34, 0x9C, 0x19}};
    template <>
    inline constexpr GUID iid_of<IIterable<IDeviceInformation*>>{
        0xDD9F8A5D, 0xEC98, 0x5F4B, {0xA3, 0xEA, 0x9C, 0x8B, 0x5A, 0xD5, 0x3C, 0x4B}};
    template <>
    inline constexpr GUID iid_of<IIterator<IDeviceInformation*>>{
        0x6F85D843, 0xE8AB, 0x5B46, {0x85, 0xD7, 0x32, 0x7C, 0x58, 0xD1, 0x87, 0x12}};
    template <>
    inline constexpr GUID iid_of<IVector<IDeviceInformation*>>{
        0x0FCA458F, 0xAD7F, 0x5259, {0xA7, 0x4D, 0x25, 0xE8, 0xFE, 0xF4, 0x8C, 0x1B}};
    template <>
    inline constexpr GUID iid_of<IVectorView<IDeviceInformation*>>{
        0xE170688F, 0x3495, 0x5BF6, {0xAA, 0xB5, 0x9C, 0xAC, 0x17, 0xE0, 0xF1, 0x0F}};
    template <>
    inline constexpr GUID iid_of<IObservableVector<IDeviceInformation*>>{
        0x9C5711E3, 0x3519, 0x5581, {0x9F, 0xA6, 0xE2, 0x5E, 0x18, 0x1D, 0xF9, 0xA1}};
    template <>
    inline constexpr GUID iid_of<VectorChangedEventHandler<IDeviceInformation*>>{
        0x9217758C, 0xE007, 0x50D8, {0x89, 0x83, 0x5B, 0x11, 0x6D, 0xD0, 0x42, 0x6E}};
} // namespace platform
