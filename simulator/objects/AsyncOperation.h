// IAsyncOperation<T>: the caller's side of what the platform does in its own time.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Object.h"
#include "simulator/trace/Call.h"

#include <functional>
#include <mutex>
#include <type_traits>
#include <utility>

namespace simulator
{
    // The first operation of a process has the number 1.
    UINT32 NextOperationNumber() noexcept;

    // Whether the scenario lets a program close what is under way.
    bool MayAbandonOperations();

    // The name of an operation's runtime class, by its result as that crosses the boundary.
    template <typename Result>
    inline constexpr char const* operationClassName = nullptr;
    template <>
    inline constexpr auto operationClassName<platform::IDevicePairingResult*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DevicePairingResult>";
    template <>
    inline constexpr auto operationClassName<platform::IDeviceUnpairingResult*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DeviceUnpairingResult>";

    // What holds a result: a reference to an object, or a plain value.
    template <typename Result>
    struct HeldResult
    {
        using Type = Result;
    };
    template <typename Interface>
    struct HeldResult<Interface*>
    {
        using Type = Ref<Interface>;
    };

    // `Result` is as it crosses the boundary: a pointer to an interface, or an enumeration.
    template <typename Result>
    class AsyncOperation final : public Object<platform::IAsyncOperation<Result>, platform::IAsyncInfo>
    {
        using Handler = platform::AsyncOperationCompletedHandler<Result>;
        using AsyncStatus = platform::AsyncStatus;

    public:
        using Held = typename HeldResult<Result>::Type;

        // `subject` is what the trace names it by. `cancelled` is told when the caller cancels, with no lock held.
        AsyncOperation(std::string subject, std::function<void()> cancelled)
            : m_subject(std::move(subject))
            , m_cancelled(std::move(cancelled))
        {
        }

        // The result of an operation that is over: to be followed by FireCompleted. A cancellation that came
        // first stands.
        void Complete(Held result)
        {
            Settle(AsyncStatus::Completed, S_OK, std::move(result));
        }

        void Fail(HRESULT code)
        {
            Settle(AsyncStatus::Error, code, {});
        }

        void MarkCancelled()
        {
            Settle(AsyncStatus::Canceled, S_OK, {});
        }

        // Calls the completion handler, or leaves it to put_Completed when none is set yet.
        void FireCompleted()
        {
            std::unique_lock lock(m_mutex);
            auto const handler = std::exchange(m_handler, {});
            auto const status = m_status;
            lock.unlock();
            if (handler)
            {
                handler->Invoke(this, status);
            }
        }

        HRESULT STDMETHODCALLTYPE put_Completed(Handler* handler) override
        {
            return Call("AsyncOperation.put_Completed", m_subject, [&](std::string&) {
                std::unique_lock lock(m_mutex);
                if (m_closed)
                {
                    return illegalMethodCall;
                }
                if (std::exchange(m_handlerAssigned, true))
                {
                    return illegalDelegateAssignment;
                }
                if (m_status == AsyncStatus::Started)
                {
                    m_handler = Ref<Handler>(handler);
                    return S_OK;
                }
                auto const status = m_status;
                lock.unlock();
                if (handler)
                {
                    handler->Invoke(this, status);
                }
                return S_OK;
            });
        }

        HRESULT STDMETHODCALLTYPE get_Completed(Handler** handler) override
        {
            return Call("AsyncOperation.get_Completed", m_subject, [&](std::string&) {
                if (!handler)
                {
                    return E_POINTER;
                }
                std::lock_guard const lock(m_mutex);
                *handler = m_closed ? nullptr : Ref(m_handler).Detach();
                return m_closed ? illegalMethodCall : S_OK;
            });
        }

        HRESULT STDMETHODCALLTYPE GetResults(Result* results) override
        {
            return Call("AsyncOperation.GetResults", m_subject, [&](std::string&) {
                if (!results)
                {
                    return E_POINTER;
                }
                *results = {};
                std::lock_guard const lock(m_mutex);
                if (!m_closed && m_status == AsyncStatus::Error)
                {
                    return m_error;
                }
                if (m_closed || m_status != AsyncStatus::Completed)
                {
                    return illegalMethodCall;
                }
                if constexpr (std::is_pointer_v<Result>)
                {
                    *results = Held(m_result).Detach();
                }
                else
                {
                    *results = m_result;
                }
                return S_OK;
            });
        }

        HRESULT STDMETHODCALLTYPE get_Id(UINT32* id) override
        {
            return Read("AsyncOperation.get_Id", id, [&] { return m_number; });
        }

        HRESULT STDMETHODCALLTYPE get_Status(AsyncStatus* status) override
        {
            return Read("AsyncOperation.get_Status", status, [&] { return m_status; });
        }

        HRESULT STDMETHODCALLTYPE get_ErrorCode(HRESULT* code) override
        {
            return Call("AsyncOperation.get_ErrorCode", m_subject, [&](std::string& result) {
                if (!code)
                {
                    return E_POINTER;
                }
                std::lock_guard const lock(m_mutex);
                *code = m_error;
                result = m_closed ? std::string() : CodeText(m_error);
                return m_closed ? illegalMethodCall : S_OK;
            });
        }

        HRESULT STDMETHODCALLTYPE Cancel() override
        {
            return Call("AsyncOperation.Cancel", m_subject, [&](std::string&) {
                {
                    std::lock_guard const lock(m_mutex);
                    if (m_closed)
                    {
                        return illegalMethodCall;
                    }
                    if (m_status != AsyncStatus::Started)
                    {
                        return S_OK;
                    }
                    m_status = AsyncStatus::Canceled;
                }
                m_cancelled();
                return S_OK;
            });
        }

        HRESULT STDMETHODCALLTYPE Close() override
        {
            return Call("AsyncOperation.Close", m_subject, [&](std::string&) {
                Ref<Handler> dropped; // outside the lock: it may be the handler's last reference
                bool const mayAbandon = MayAbandonOperations();
                std::lock_guard const lock(m_mutex);
                if (m_status == AsyncStatus::Started && !mayAbandon)
                {
                    return illegalStateChange;
                }
                m_closed = true;
                std::swap(dropped, m_handler);
                return S_OK;
            });
        }

    private:
        char const* ClassName() const noexcept override
        {
            static_assert(operationClassName<Result> != nullptr);
            return operationClassName<Result>;
        }

        void Settle(AsyncStatus status, HRESULT error, Held result)
        {
            std::lock_guard const lock(m_mutex);
            if (m_status == AsyncStatus::Started)
            {
                m_status = status;
                m_error = error;
                m_result = std::move(result);
            }
        }

        template <typename T, typename Value>
        HRESULT Read(Method method, T* value, Value read)
        {
            return Call(method, m_subject, [&](std::string& result) {
                if (!value)
                {
                    return E_POINTER;
                }
                std::lock_guard const lock(m_mutex);
                if (m_closed)
                {
                    return illegalMethodCall;
                }
                *value = read();
                result = Text(*value);
                return S_OK;
            });
        }

        std::string const m_subject;
        std::function<void()> const m_cancelled;
        UINT32 const m_number = NextOperationNumber();
        std::mutex m_mutex;
        AsyncStatus m_status = AsyncStatus::Started;
        HRESULT m_error = S_OK;
        Held m_result{};
        Ref<Handler> m_handler;
        bool m_handlerAssigned = false;
        bool m_closed = false;
    };

    using PairingOperation = AsyncOperation<platform::IDevicePairingResult*>;
    using UnpairingOperation = AsyncOperation<platform::IDeviceUnpairingResult*>;
} // namespace simulator
