// Windows.Devices.Radios at the binary level: the switches of the PC's radios.
#pragma once

#include "platform/abi/Collections.h"
#include "platform/abi/RadioValues.h"

namespace platform
{
    struct IRadio;

    using RadioHandler = TypedEventHandler<IRadio*, ::IInspectable*>;

    struct IRadioStatics : ::IInspectable
    {
        static constexpr GUID iid{0x5FB6A12E, 0x67CB, 0x46AE, {0xAA, 0xE9, 0x65, 0x91, 0x9F, 0x86, 0xEF, 0xF4}};
        virtual HRESULT STDMETHODCALLTYPE GetRadiosAsync(IAsyncOperation<IVectorView<IRadio*>*>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelector(HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE FromIdAsync(HSTRING id, IAsyncOperation<IRadio*>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE RequestAccessAsync(IAsyncOperation<RadioAccessStatus>** operation) = 0;
    };

    struct IRadio : ::IInspectable
    {
        static constexpr GUID iid{0x252118DF, 0xB33E, 0x416A, {0x87, 0x5F, 0x1C, 0xF3, 0x8A, 0xE2, 0xD8, 0x3E}};
        virtual HRESULT STDMETHODCALLTYPE SetStateAsync(RadioState value,
                                                        IAsyncOperation<RadioAccessStatus>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_StateChanged(RadioHandler* handler, EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_StateChanged(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_State(RadioState* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Name(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Kind(RadioKind* value) = 0;
    };

    template <>
    inline constexpr GUID iid_of<IAsyncOperation<IRadio*>>{
        0xEAC62C40, 0x8DBC, 0x5854, {0x8B, 0xA0, 0xB7, 0xB9, 0x94, 0x0E, 0x73, 0x89}};
    template <>
    inline constexpr GUID iid_of<AsyncOperationCompletedHandler<IRadio*>>{
        0x8A5C7E3A, 0x80E2, 0x585B, {0x86, 0x30, 0x7A, 0x8E, 0x77, 0x7F, 0x03, 0x54}};
    template <>
    inline constexpr GUID iid_of<IAsyncOperation<IVectorView<IRadio*>*>>{
        0x040B54A1, 0x203E, 0x58F5, {0x94, 0x3F, 0xC1, 0xCC, 0xA8, 0x6B, 0xD5, 0x32}};
    template <>
    inline constexpr GUID iid_of<AsyncOperationCompletedHandler<IVectorView<IRadio*>*>>{
        0xD30691E6, 0x60A0, 0x59C9, {0x89, 0x65, 0x5B, 0xBE, 0x28, 0x2E, 0x82, 0x08}};
    template <>
    inline constexpr GUID iid_of<IVectorView<IRadio*>>{
        0x65066C36, 0x090B, 0x5466, {0xB8, 0xE5, 0xE7, 0x56, 0x5D, 0xC3, 0x41, 0x75}};
    template <>
    inline constexpr GUID iid_of<IIterable<IRadio*>>{
        0xE82500AF, 0x1F53, 0x504E, {0xB8, 0xBE, 0xDA, 0xC4, 0xFB, 0xB6, 0x90, 0x84}};
    template <>
    inline constexpr GUID iid_of<IIterator<IRadio*>>{
        0xCF37EDE7, 0xEAEC, 0x5B8F, {0xAD, 0x31, 0x4D, 0x51, 0xAB, 0xD9, 0xDB, 0x05}};
    template <>
    inline constexpr GUID iid_of<IAsyncOperation<RadioAccessStatus>>{
        0x21FB30EF, 0x072F, 0x502C, {0x98, 0x98, 0xD0, 0xC3, 0xB2, 0xCD, 0x9A, 0xC5}};
    template <>
    inline constexpr GUID iid_of<AsyncOperationCompletedHandler<RadioAccessStatus>>{
        0xBD248E73, 0xF05F, 0x574C, {0xAE, 0x3D, 0x9B, 0x95, 0xC4, 0xBF, 0x28, 0x2A}};
    template <>
    inline constexpr GUID iid_of<RadioHandler>{
        0xFC6AA329, 0xB586, 0x5EBB, {0x9E, 0x85, 0x3F, 0x6B, 0x84, 0xEB, 0xDF, 0x18}};
} // namespace platform
