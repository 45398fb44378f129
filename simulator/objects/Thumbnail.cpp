#include "simulator/objects/Thumbnail.h"

#include "simulator/objects/Errand.h"

#include <algorithm>
#include <cstdint>

namespace simulator
{
    namespace
    {
        using platform::AsyncStatus;
        using platform::IBuffer;
        using Picture = std::span<unsigned char const>;

        // Memory is read at once: the operation is complete when the caller gets it.
        class FinishedRead final : public Object<platform::ReadOperation, platform::IAsyncInfo>
        {
            using CompletedHandler = platform::ReadCompletedHandler;
            using ProgressHandler = platform::ReadProgressHandler;

        public:
            explicit FinishedRead(Ref<IBuffer> buffer)
                : m_buffer(std::move(buffer))
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.IAsyncOperationWithProgress`2<Windows.Storage.Streams.IBuffer, UInt32>";
            }

            // There is no progress to tell of any more.
            HRESULT STDMETHODCALLTYPE put_Progress(ProgressHandler*) override
            {
                return m_closed ? illegalMethodCall : S_OK;
            }

            HRESULT STDMETHODCALLTYPE get_Progress(ProgressHandler** handler) override
            {
                return Answer(handler, [] { return nullptr; });
            }

            HRESULT STDMETHODCALLTYPE put_Completed(CompletedHandler* handler) override
            {
                if (m_closed)
                {
                    return illegalMethodCall;
                }
                if (m_handlerAssigned.exchange(true))
                {
                    return illegalDelegateAssignment;
                }
                if (handler)
                {
                    handler->Invoke(this, AsyncStatus::Completed);
                }
                return S_OK;
            }

            HRESULT STDMETHODCALLTYPE get_Completed(CompletedHandler** handler) override
            {
                return Answer(handler, [] { return nullptr; });
            }

            HRESULT STDMETHODCALLTYPE GetResults(IBuffer** results) override
            {
                return Answer(results, [&] { return Ref(m_buffer).Detach(); });
            }

            HRESULT STDMETHODCALLTYPE get_Id(UINT32* id) override
            {
                return Answer(id, [&] { return m_number; });
            }

            HRESULT STDMETHODCALLTYPE get_Status(AsyncStatus* status) override
            {
                return Answer(status, [] { return AsyncStatus::Completed; });
            }

            HRESULT STDMETHODCALLTYPE get_ErrorCode(HRESULT* code) override
            {
                return Answer(code, [] { return S_OK; });
            }

            HRESULT STDMETHODCALLTYPE Cancel() override
            {
                return m_closed ? illegalMethodCall : S_OK;
            }

            HRESULT STDMETHODCALLTYPE Close() override
            {
                m_closed = true;
                return S_OK;
            }

        private:
            template <typename T, typename Read>
            HRESULT Answer(T* out, Read read)
            {
                if (!out)
                {
                    return E_POINTER;
                }
                *out = {};
                if (m_closed)
                {
                    return illegalMethodCall;
                }
                *out = read();
                return S_OK;
            }

            Ref<IBuffer> const m_buffer;
            UINT32 const m_number = NextOperationNumber();
            std::atomic<bool> m_handlerAssigned = false;
            std::atomic<bool> m_closed = false;
        };

        class Thumbnail final
            : public Object<platform::DeviceThumbnail, platform::IContentTypeProvider, platform::IRandomAccessStream,
                            platform::IInputStream, platform::IOutputStream, platform::IClosable>
        {
        public:
            Thumbnail(Picture picture, UINT64 position)
                : m_picture(picture)
                , m_position(position)
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Devices.Enumeration.DeviceThumbnail";
            }

            HRESULT STDMETHODCALLTYPE get_ContentType(HSTRING* value) override
            {
                return value ? MakeHstring("image/png", value) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE get_Size(UINT64* value) override
            {
                return Answer(value, [&] { return UINT64{m_picture.size()}; });
            }

            HRESULT STDMETHODCALLTYPE put_Size(UINT64) override
            {
                return E_ACCESSDENIED;
            }

            HRESULT STDMETHODCALLTYPE GetInputStreamAt(UINT64 position, platform::IInputStream** stream) override
            {
                return Answer(stream, [&] { return Make<Thumbnail>(m_picture, position).Detach(); });
            }

            HRESULT STDMETHODCALLTYPE GetOutputStreamAt(UINT64, platform::IOutputStream** stream) override
            {
                return Refuse(stream);
            }

            HRESULT STDMETHODCALLTYPE get_Position(UINT64* value) override
            {
                return Answer(value, [&] { return m_position; });
            }

            HRESULT STDMETHODCALLTYPE Seek(UINT64 position) override
            {
                std::lock_guard const lock(m_mutex);
                m_position = position;
                return m_closed ? objectClosed : S_OK;
            }

            HRESULT STDMETHODCALLTYPE CloneStream(platform::IRandomAccessStream** stream) override
            {
                return Answer(stream, [&] { return Make<Thumbnail>(m_picture, UINT64{0}).Detach(); });
            }

            HRESULT STDMETHODCALLTYPE get_CanRead(boolean* value) override
            {
                return Answer(value, [] { return boolean{true}; });
            }

            HRESULT STDMETHODCALLTYPE get_CanWrite(boolean* value) override
            {
                return Answer(value, [] { return boolean{false}; });
            }

            HRESULT STDMETHODCALLTYPE ReadAsync(IBuffer* buffer, UINT32 count, UINT32,
                                                platform::ReadOperation** operation) override
            {
                if (!buffer || !operation)
                {
                    return E_POINTER;
                }
                *operation = nullptr;
                if (HRESULT const code = Read(*buffer, count); FAILED(code))
                {
                    return code;
                }
                *operation = Make<FinishedRead>(Ref(buffer)).Detach();
                return S_OK;
            }

            HRESULT STDMETHODCALLTYPE WriteAsync(IBuffer*, platform::WriteOperation** operation) override
            {
                return Refuse(operation);
            }

            HRESULT STDMETHODCALLTYPE FlushAsync(platform::IAsyncOperation<boolean>** operation) override
            {
                return Refuse(operation);
            }

            HRESULT STDMETHODCALLTYPE Close() override
            {
                std::lock_guard const lock(m_mutex);
                m_closed = true;
                return S_OK;
            }

        private:
            template <typename T, typename Give>
            HRESULT Answer(T* out, Give give)
            {
                if (!out)
                {
                    return E_POINTER;
                }
                *out = {};
                std::lock_guard const lock(m_mutex);
                if (m_closed)
                {
                    return objectClosed;
                }
                *out = give();
                return S_OK;
            }

            template <typename T>
            HRESULT Refuse(T** out)
            {
                return out ? (*out = nullptr, E_ACCESSDENIED) : E_POINTER;
            }

            HRESULT Read(IBuffer& buffer, UINT32 count)
            {
                void* found = nullptr;
                if (HRESULT const code = buffer.QueryInterface(platform::IBufferByteAccess::iid, &found); FAILED(code))
                {
                    return code;
                }
                auto const access =
                    Ref<platform::IBufferByteAccess>::Adopt(static_cast<platform::IBufferByteAccess*>(found));
                BYTE* bytes = nullptr;
                UINT32 capacity = 0;
                if (FAILED(access->Buffer(&bytes)) || FAILED(buffer.get_Capacity(&capacity)) || count > capacity)
                {
                    return E_INVALIDARG;
                }
                std::lock_guard const lock(m_mutex);
                if (m_closed)
                {
                    return objectClosed;
                }
                auto const rest = m_picture.subspan(std::min<std::size_t>(m_position, m_picture.size()));
                auto const part = rest.first(std::min<std::size_t>(count, rest.size()));
                std::ranges::copy(part, bytes);
                m_position += part.size();
                return buffer.put_Length(static_cast<UINT32>(part.size()));
            }

            Picture const m_picture;
            std::mutex m_mutex;
            UINT64 m_position;
            bool m_closed = false;
        };
    } // namespace

    Ref<ThumbnailOperation> OpenThumbnail(std::string const& id, Picture picture)
    {
        return RunErrand<platform::DeviceThumbnail*>(id, [picture](ThumbnailOperation& async) {
            async.Complete(Ref<platform::DeviceThumbnail>::Adopt(Make<Thumbnail>(picture, UINT64{0}).Detach()));
        });
    }
} // namespace simulator
