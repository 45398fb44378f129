// Windows.Storage.Streams at the binary level: what a picture of a device is handed out as.
#pragma once

#include "platform/abi/Foundation.h"

namespace platform
{
    struct IBuffer : ::IInspectable
    {
        static constexpr GUID iid{0x905A0FE0, 0xBC53, 0x11DF, {0x8C, 0x49, 0x00, 0x1E, 0x4F, 0xC6, 0x86, 0xDA}};
        virtual HRESULT STDMETHODCALLTYPE get_Capacity(UINT32* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Length(UINT32* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE put_Length(UINT32 value) = 0;
    };

    struct IBufferByteAccess : ::IUnknown
    {
        static constexpr GUID iid{0x905A0FEF, 0xBC53, 0x11DF, {0x8C, 0x49, 0x00, 0x1E, 0x4F, 0xC6, 0x86, 0xDA}};
        virtual HRESULT STDMETHODCALLTYPE Buffer(BYTE** value) = 0;
    };

    using ReadOperation = IAsyncOperationWithProgress<IBuffer*, UINT32>;
    using ReadProgressHandler = AsyncOperationProgressHandler<IBuffer*, UINT32>;
    using ReadCompletedHandler = AsyncOperationWithProgressCompletedHandler<IBuffer*, UINT32>;
    using WriteOperation = IAsyncOperationWithProgress<UINT32, UINT32>;

    struct IInputStream : ::IInspectable
    {
        static constexpr GUID iid{0x905A0FE2, 0xBC53, 0x11DF, {0x8C, 0x49, 0x00, 0x1E, 0x4F, 0xC6, 0x86, 0xDA}};
        virtual HRESULT STDMETHODCALLTYPE ReadAsync(IBuffer* buffer, UINT32 count, UINT32 options,
                                                    ReadOperation** operation) = 0;
    };

    struct IOutputStream : ::IInspectable
    {
        static constexpr GUID iid{0x905A0FE6, 0xBC53, 0x11DF, {0x8C, 0x49, 0x00, 0x1E, 0x4F, 0xC6, 0x86, 0xDA}};
        virtual HRESULT STDMETHODCALLTYPE WriteAsync(IBuffer* buffer, WriteOperation** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE FlushAsync(IAsyncOperation<boolean>** operation) = 0;
    };

    struct IRandomAccessStream : ::IInspectable
    {
        static constexpr GUID iid{0x905A0FE1, 0xBC53, 0x11DF, {0x8C, 0x49, 0x00, 0x1E, 0x4F, 0xC6, 0x86, 0xDA}};
        virtual HRESULT STDMETHODCALLTYPE get_Size(UINT64* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE put_Size(UINT64 value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetInputStreamAt(UINT64 position, IInputStream** stream) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetOutputStreamAt(UINT64 position, IOutputStream** stream) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Position(UINT64* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE Seek(UINT64 position) = 0;
        virtual HRESULT STDMETHODCALLTYPE CloneStream(IRandomAccessStream** stream) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_CanRead(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_CanWrite(boolean* value) = 0;
    };

    struct IContentTypeProvider : ::IInspectable
    {
        static constexpr GUID iid{0x97D098A5, 0x3B99, 0x4DE9, {0x88, 0xA5, 0xE1, 0x1D, 0x2F, 0x50, 0xC7, 0x95}};
        virtual HRESULT STDMETHODCALLTYPE get_ContentType(HSTRING* value) = 0;
    };

    // It adds nothing but the promise that the object answers the others.
    struct IRandomAccessStreamWithContentType : ::IInspectable
    {
        static constexpr GUID iid{0xCC254827, 0x4B3D, 0x438F, {0x92, 0x32, 0x10, 0xC7, 0x6B, 0xC7, 0xE0, 0x38}};
    };

    template <>
    inline constexpr GUID iid_of<ReadOperation>{
        0xD26B2819, 0x897F, 0x5C7D, {0x84, 0xD6, 0x56, 0xD7, 0x96, 0x56, 0x14, 0x31}};
    template <>
    inline constexpr GUID iid_of<ReadProgressHandler>{
        0xBF666554, 0x7605, 0x5D9A, {0xB1, 0x4E, 0x18, 0xD8, 0xC8, 0x47, 0x2A, 0xFE}};
    template <>
    inline constexpr GUID iid_of<ReadCompletedHandler>{
        0x06386A7A, 0xE009, 0x5B0B, {0xAB, 0x68, 0xA8, 0xE4, 0x8B, 0x51, 0x66, 0x47}};
} // namespace platform
