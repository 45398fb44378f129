// The Windows Runtime's binary interface, hand-written: what every type of it stands on.
//
// Each interface carries its identifier as `iid`; a parameterised one gets its identifier by a
// specialisation of `iid_of`. The order of the virtual functions is the order of the vtable slots:
// never reorder, never insert. tests/unit/Abi*Test.cpp pin identifiers, slots and values.
#pragma once

#include <windows.h>
#include <activation.h>
#include <eventtoken.h>
#include <hstring.h>
#include <inspectable.h>

namespace platform
{
    template <typename T>
    inline constexpr GUID iid_of = T::iid;

    template <>
    inline constexpr GUID iid_of<::IUnknown>{
        0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
    template <>
    inline constexpr GUID iid_of<::IInspectable>{
        0xAF86E2E0, 0xB12D, 0x4C6A, {0x9C, 0x5A, 0xD7, 0xAA, 0x65, 0x10, 0x1E, 0x90}};
    template <>
    inline constexpr GUID iid_of<::IActivationFactory>{
        0x00000035, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
    template <>
    inline constexpr GUID iid_of<::IMarshal>{
        0x00000003, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

    // A marker: the object may be called from any thread.
    struct IAgileObject : ::IUnknown
    {
        static constexpr GUID iid{0x94EA2B94, 0xE9CC, 0x49E0, {0xC0, 0xFF, 0xEE, 0x64, 0xCA, 0x8F, 0x5B, 0x90}};
    };

    struct IWeakReference : ::IUnknown
    {
        static constexpr GUID iid{0x00000037, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
        virtual HRESULT STDMETHODCALLTYPE Resolve(GUID const& id, void** object) = 0;
    };

    struct IWeakReferenceSource : ::IUnknown
    {
        static constexpr GUID iid{0x00000038, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
        virtual HRESULT STDMETHODCALLTYPE GetWeakReference(IWeakReference** reference) = 0;
    };

    struct IContextCallback : ::IUnknown
    {
        static constexpr GUID iid{0x000001DA, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
        struct CallData
        {
            DWORD dispatchId;
            DWORD reserved;
            void* data;
        };
        virtual HRESULT STDMETHODCALLTYPE ContextCallback(HRESULT(STDMETHODCALLTYPE* callback)(CallData*),
                                                          CallData* data, GUID const& id, int method,
                                                          ::IUnknown* unknown) = 0;
    };

    enum class AsyncStatus : INT32
    {
        Started = 0,
        Completed = 1,
        Canceled = 2,
        Error = 3,
    };

    struct IAsyncInfo : ::IInspectable
    {
        static constexpr GUID iid{0x00000036, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
        virtual HRESULT STDMETHODCALLTYPE get_Id(UINT32* id) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Status(AsyncStatus* status) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_ErrorCode(HRESULT* code) = 0;
        virtual HRESULT STDMETHODCALLTYPE Cancel() = 0;
        virtual HRESULT STDMETHODCALLTYPE Close() = 0;
    };

    template <typename T>
    struct IAsyncOperation;

    // T and the other parameters below are the types as they cross the boundary: HSTRING, or a
    // pointer to the default interface of a runtime class.
    template <typename T>
    struct AsyncOperationCompletedHandler : ::IUnknown
    {
        virtual HRESULT STDMETHODCALLTYPE Invoke(IAsyncOperation<T>* operation, AsyncStatus status) = 0;
    };

    template <typename T>
    struct IAsyncOperation : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE put_Completed(AsyncOperationCompletedHandler<T>* handler) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Completed(AsyncOperationCompletedHandler<T>** handler) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetResults(T* results) = 0;
    };

    template <typename T, typename Progress>
    struct IAsyncOperationWithProgress;

    template <typename T, typename Progress>
    struct AsyncOperationProgressHandler : ::IUnknown
    {
        virtual HRESULT STDMETHODCALLTYPE Invoke(IAsyncOperationWithProgress<T, Progress>* operation,
                                                 Progress progress) = 0;
    };

    template <typename T, typename Progress>
    struct AsyncOperationWithProgressCompletedHandler : ::IUnknown
    {
        virtual HRESULT STDMETHODCALLTYPE Invoke(IAsyncOperationWithProgress<T, Progress>* operation,
                                                 AsyncStatus status) = 0;
    };

    template <typename T, typename Progress>
    struct IAsyncOperationWithProgress : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE put_Progress(AsyncOperationProgressHandler<T, Progress>* handler) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Progress(AsyncOperationProgressHandler<T, Progress>** handler) = 0;
        virtual HRESULT STDMETHODCALLTYPE
        put_Completed(AsyncOperationWithProgressCompletedHandler<T, Progress>* handler) = 0;
        virtual HRESULT STDMETHODCALLTYPE
        get_Completed(AsyncOperationWithProgressCompletedHandler<T, Progress>** handler) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetResults(T* results) = 0;
    };

    template <typename Sender, typename Args>
    struct TypedEventHandler : ::IUnknown
    {
        virtual HRESULT STDMETHODCALLTYPE Invoke(Sender sender, Args args) = 0;
    };

    struct IClosable : ::IInspectable
    {
        static constexpr GUID iid{0x30D5A829, 0x7FA4, 0x4026, {0x83, 0xBB, 0xD7, 0x5B, 0xAE, 0x4E, 0xA9, 0x9E}};
        virtual HRESULT STDMETHODCALLTYPE Close() = 0;
    };

    struct IDeferral : ::IInspectable
    {
        static constexpr GUID iid{0xD6269732, 0x3B7F, 0x46A7, {0xB4, 0x0B, 0x4F, 0xDC, 0xA2, 0xA2, 0xC6, 0x93}};
        virtual HRESULT STDMETHODCALLTYPE Complete() = 0;
    };

    enum class PropertyType : INT32
    {
        Empty = 0,
        UInt8 = 1,
        Int16 = 2,
        UInt16 = 3,
        Int32 = 4,
        UInt32 = 5,
        Int64 = 6,
        UInt64 = 7,
        Single = 8,
        Double = 9,
        Char16 = 10,
        Boolean = 11,
        String = 12,
        Inspectable = 13,
        DateTime = 14,
        TimeSpan = 15,
        Guid = 16,
        UInt8Array = 1025,
        StringArray = 1036,
        GuidArray = 1040,
    };

    // In units of 100 ns since the beginning of 1601, UTC.
    struct DateTime
    {
        INT64 UniversalTime;
    };

    // Stands for UINT8 as an argument: boolean is the same type to the compiler, and another one to the platform.
    struct UInt8;

    // A boxed value by its own type.
    template <typename T>
    struct IReference : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE get_Value(T* value) = 0;
    };

    template <>
    struct IReference<UInt8> : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE get_Value(UINT8* value) = 0;
    };

    // The elements are the caller's to free, and so is what holds them, with CoTaskMemFree.
    template <typename T>
    struct IReferenceArray : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE get_Value(UINT32* size, T** value) = 0;
    };

    template <>
    struct IReferenceArray<UInt8> : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE get_Value(UINT32* size, UINT8** value) = 0;
    };

    template <>
    inline constexpr GUID iid_of<IReference<boolean>>{
        0x3C00FD60, 0x2950, 0x5939, {0xA2, 0x1A, 0x2D, 0x12, 0xC5, 0xA0, 0x1B, 0x8A}};
    template <>
    inline constexpr GUID iid_of<IReference<UInt8>>{
        0xE5198CC8, 0x2873, 0x55F5, {0xB0, 0xA1, 0x84, 0xFF, 0x9E, 0x4A, 0xAD, 0x62}};
    template <>
    inline constexpr GUID iid_of<IReference<UINT16>>{
        0x5AB7D2C3, 0x6B62, 0x5E71, {0xA4, 0xB6, 0x2D, 0x49, 0xC4, 0xF2, 0x38, 0xFD}};
    template <>
    inline constexpr GUID iid_of<IReference<INT32>>{
        0x548CEFBD, 0xBC8A, 0x5FA0, {0x8D, 0xF2, 0x95, 0x74, 0x40, 0xFC, 0x8B, 0xF4}};
    template <>
    inline constexpr GUID iid_of<IReference<UINT32>>{
        0x513EF3AF, 0xE784, 0x5325, {0xA9, 0x1E, 0x97, 0xC2, 0xB8, 0x11, 0x1C, 0xF3}};
    template <>
    inline constexpr GUID iid_of<IReference<HSTRING>>{
        0xFD416DFB, 0x2A07, 0x52EB, {0xAA, 0xE3, 0xDF, 0xCE, 0x14, 0x11, 0x6C, 0x05}};
    template <>
    inline constexpr GUID iid_of<IReference<GUID>>{
        0x7D50F649, 0x632C, 0x51F9, {0x84, 0x9A, 0xEE, 0x49, 0x42, 0x89, 0x33, 0xEA}};
    template <>
    inline constexpr GUID iid_of<IReference<DateTime>>{
        0x5541D8A7, 0x497C, 0x5AA4, {0x86, 0xFC, 0x77, 0x13, 0xAD, 0xBF, 0x2A, 0x2C}};
    template <>
    inline constexpr GUID iid_of<IReferenceArray<UInt8>>{
        0x2AF22683, 0x3734, 0x56D0, {0xA6, 0x0E, 0x68, 0x8C, 0xC8, 0x5D, 0x16, 0x19}};
    template <>
    inline constexpr GUID iid_of<IReferenceArray<HSTRING>>{
        0x0385688E, 0xE3C7, 0x5C5E, {0xA3, 0x89, 0x55, 0x24, 0xED, 0xE3, 0x49, 0xF1}};
    template <>
    inline constexpr GUID iid_of<IReferenceArray<GUID>>{
        0xEECF9838, 0xC1C2, 0x5B4A, {0x97, 0x6F, 0xCE, 0xC2, 0x61, 0xAE, 0x1D, 0x55}};

    // The same by a getter for each type. The scalar getters that a device property needs are declared by their own
    // types; the others keep their slots with untyped results.
    struct IPropertyValue : ::IInspectable
    {
        static constexpr GUID iid{0x4BD682DD, 0x7554, 0x40E9, {0x9A, 0x9B, 0x82, 0x65, 0x4E, 0xDE, 0x7E, 0x62}};
        virtual HRESULT STDMETHODCALLTYPE get_Type(PropertyType* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsNumericScalar(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetUInt8(UINT8* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetInt16(INT16* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetUInt16(UINT16* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetInt32(INT32* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetUInt32(UINT32* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetInt64(INT64* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetUInt64(UINT64* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetSingle(FLOAT* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDouble(DOUBLE* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetChar16(WCHAR* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetBoolean(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetString(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetGuid(GUID* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDateTime(DateTime* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetTimeSpan(void* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetPoint(void* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetSize(void* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetRect(void* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetUInt8Array(UINT32* size, UINT8** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetInt16Array(UINT32* size, INT16** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetUInt16Array(UINT32* size, UINT16** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetInt32Array(UINT32* size, INT32** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetUInt32Array(UINT32* size, UINT32** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetInt64Array(UINT32* size, INT64** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetUInt64Array(UINT32* size, UINT64** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetSingleArray(UINT32* size, FLOAT** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDoubleArray(UINT32* size, DOUBLE** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetChar16Array(UINT32* size, WCHAR** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetBooleanArray(UINT32* size, boolean** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetStringArray(UINT32* size, HSTRING** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetInspectableArray(UINT32* size, ::IInspectable*** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetGuidArray(UINT32* size, GUID** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDateTimeArray(UINT32* size, void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetTimeSpanArray(UINT32* size, void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetPointArray(UINT32* size, void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetSizeArray(UINT32* size, void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetRectArray(UINT32* size, void** value) = 0;
    };
} // namespace platform
