// Windows.Foundation.Collections at the binary level. The element types are as they cross the boundary.
#pragma once

#include "platform/abi/Foundation.h"

namespace platform
{
    template <typename T>
    struct IIterator : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE get_Current(T* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_HasCurrent(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE MoveNext(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetMany(UINT32 capacity, T* values, UINT32* actual) = 0;
    };

    template <typename T>
    struct IIterable : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE First(IIterator<T>** iterator) = 0;
    };

    template <typename T>
    struct IVectorView : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, T* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) = 0;
        virtual HRESULT STDMETHODCALLTYPE IndexOf(T value, UINT32* index, boolean* found) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetMany(UINT32 start, UINT32 capacity, T* values, UINT32* actual) = 0;
    };

    template <typename T>
    struct IVector : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, T* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetView(IVectorView<T>** view) = 0;
        virtual HRESULT STDMETHODCALLTYPE IndexOf(T value, UINT32* index, boolean* found) = 0;
        virtual HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, T value) = 0;
        virtual HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, T value) = 0;
        virtual HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) = 0;
        virtual HRESULT STDMETHODCALLTYPE Append(T value) = 0;
        virtual HRESULT STDMETHODCALLTYPE RemoveAtEnd() = 0;
        virtual HRESULT STDMETHODCALLTYPE Clear() = 0;
        virtual HRESULT STDMETHODCALLTYPE GetMany(UINT32 start, UINT32 capacity, T* values, UINT32* actual) = 0;
        virtual HRESULT STDMETHODCALLTYPE ReplaceAll(UINT32 size, T* values) = 0;
    };

    enum class CollectionChange : INT32
    {
        Reset = 0,
        ItemInserted = 1,
        ItemRemoved = 2,
        ItemChanged = 3,
    };

    struct IVectorChangedEventArgs : ::IInspectable
    {
        static constexpr GUID iid{0x575933DF, 0x34FE, 0x4480, {0xAF, 0x15, 0x07, 0x69, 0x1F, 0x3D, 0x5D, 0x9B}};
        virtual HRESULT STDMETHODCALLTYPE get_CollectionChange(CollectionChange* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Index(UINT32* value) = 0;
    };

    template <typename T>
    struct IObservableVector;

    template <typename T>
    struct VectorChangedEventHandler : ::IUnknown
    {
        virtual HRESULT STDMETHODCALLTYPE Invoke(IObservableVector<T>* sender, IVectorChangedEventArgs* args) = 0;
    };

    template <typename T>
    struct IObservableVector : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE add_VectorChanged(VectorChangedEventHandler<T>* handler,
                                                            EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_VectorChanged(EventRegistrationToken token) = 0;
    };

    template <typename K, typename V>
    struct IKeyValuePair : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE get_Key(K* key) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Value(V* value) = 0;
    };

    template <typename K, typename V>
    struct IMapView : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE Lookup(K key, V* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) = 0;
        virtual HRESULT STDMETHODCALLTYPE HasKey(K key, boolean* found) = 0;
        virtual HRESULT STDMETHODCALLTYPE Split(IMapView<K, V>** first, IMapView<K, V>** second) = 0;
    };

    template <>
    inline constexpr GUID iid_of<IIterable<HSTRING>>{
        0xE2FCC7C1, 0x3BFC, 0x5A0B, {0xB2, 0xB0, 0x72, 0xE7, 0x69, 0xD1, 0xCB, 0x7E}};
    template <>
    inline constexpr GUID iid_of<IIterator<HSTRING>>{
        0x8C304EBB, 0x6615, 0x50A4, {0x88, 0x29, 0x87, 0x9E, 0xCD, 0x44, 0x32, 0x36}};
    template <>
    inline constexpr GUID iid_of<IVector<HSTRING>>{
        0x98B9ACC1, 0x4B56, 0x532E, {0xAC, 0x73, 0x03, 0xD5, 0x29, 0x1C, 0xCA, 0x90}};
    template <>
    inline constexpr GUID iid_of<IVectorView<HSTRING>>{
        0x2F13C006, 0xA03A, 0x5F69, {0xB0, 0x90, 0x75, 0xA4, 0x3E, 0x33, 0x42, 0x3E}};
    template <>
    inline constexpr GUID iid_of<IMapView<HSTRING, ::IInspectable*>>{
        0xBB78502A, 0xF79D, 0x54FA, {0x92, 0xC9, 0x90, 0xC5, 0x03, 0x9F, 0xDF, 0x7E}};
    template <>
    inline constexpr GUID iid_of<IKeyValuePair<HSTRING, ::IInspectable*>>{
        0x09335560, 0x6C6B, 0x5A26, {0x93, 0x48, 0x97, 0xB7, 0x81, 0x13, 0x2B, 0x20}};
    template <>
    inline constexpr GUID iid_of<IIterable<IKeyValuePair<HSTRING, ::IInspectable*>*>>{
        0xFE2F3D47, 0x5D47, 0x5499, {0x83, 0x74, 0x43, 0x0C, 0x7C, 0xDA, 0x02, 0x04}};
    template <>
    inline constexpr GUID iid_of<IIterator<IKeyValuePair<HSTRING, ::IInspectable*>*>>{
        0x5DB5FA32, 0x707C, 0x5849, {0xA0, 0x6B, 0x91, 0xC8, 0xEB, 0x9D, 0x10, 0xE8}};
} // namespace platform
