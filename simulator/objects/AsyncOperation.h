// IAsyncOperation<T>: the caller's side of a pairing or unpairing.
#pragma once

#include "simulator/com/Object.h"
#include "simulator/trace/Call.h"

#include <functional>
#include <mutex>
#include <utility>

namespace simulator
{
    // The first operation of a process has the number 1.
    UINT32 NextOperationNumber() noexcept;

    template <typename Result>
    char const* OperationClassName() noexcept;
    template <>
    char const* OperationClassName<platform::IDevicePairingResult>() noexcept;
    template <>
    char const* OperationClassName<platform::IDeviceUnpairingResult>() noexcept;

    template <typename Result>
    class AsyncOperation final : public Object<platform::IAsyncOperation<Result*>, platform::IAsyncInfo>
    {
        using Self = platform::IAsyncOperation<Result*>;
        using Handler = platform::AsyncOperationCompletedHandler<Result*>;
        using AsyncStatus = platform::AsyncStatus;

    public:
        // `cancelled` is told when the caller cancels, with no lock held.
        AsyncOperation(std::string device, std::function<void()> cancelled)
            : device_(std::move(device))
            , cancelled_(std::move(cancelled))
        {
        }

        // The result of an operation that is over: to be followed by FireCompleted. A cancellation that came
        // first stands.
        void Complete(Ref<Result> result)
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
            std::unique_lock lock(mutex_);
            auto const handler = std::exchange(handler_, {});
            auto const status = status_;
            lock.unlock();
            if (handler)
            {
                handler->Invoke(this, status);
            }
        }

        HRESULT STDMETHODCALLTYPE put_Completed(Handler* handler) override
        {
            return Call("AsyncOperation.put_Completed", device_, [&](std::string&) {
                std::unique_lock lock(mutex_);
                if (closed_)
                {
                    return illegalMethodCall;
                }
                if (std::exchange(handlerAssigned_, true))
                {
                    return illegalDelegateAssignment;
                }
                if (status_ == AsyncStatus::Started)
                {
                    handler_ = Ref<Handler>(handler);
                    return S_OK;
                }
                auto const status = status_;
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
            return Call("AsyncOperation.get_Completed", device_, [&](std::string&) {
                if (!handler)
                {
                    return E_POINTER;
                }
                std::lock_guard const lock(mutex_);
                *handler = closed_ ? nullptr : Ref(handler_).Detach();
                return closed_ ? illegalMethodCall : S_OK;
            });
        }

        HRESULT STDMETHODCALLTYPE GetResults(Result** results) override
        {
            return Call("AsyncOperation.GetResults", device_, [&](std::string&) {
                if (!results)
                {
                    return E_POINTER;
                }
                *results = nullptr;
                std::lock_guard const lock(mutex_);
                if (!closed_ && status_ == AsyncStatus::Error)
                {
                    return error_;
                }
                if (closed_ || status_ != AsyncStatus::Completed)
                {
                    return illegalMethodCall;
                }
                *results = Ref(result_).Detach();
                return S_OK;
            });
        }

        HRESULT STDMETHODCALLTYPE get_Id(UINT32* id) override
        {
            return Read("AsyncOperation.get_Id", id, [&] { return number_; });
        }

        HRESULT STDMETHODCALLTYPE get_Status(AsyncStatus* status) override
        {
            return Read("AsyncOperation.get_Status", status, [&] { return status_; });
        }

        HRESULT STDMETHODCALLTYPE get_ErrorCode(HRESULT* code) override
        {
            return Call("AsyncOperation.get_ErrorCode", device_, [&](std::string& result) {
                if (!code)
                {
                    return E_POINTER;
                }
                std::lock_guard const lock(mutex_);
                *code = error_;
                result = closed_ ? std::string() : CodeText(error_);
                return closed_ ? illegalMethodCall : S_OK;
            });
        }

        HRESULT STDMETHODCALLTYPE Cancel() override
        {
            return Call("AsyncOperation.Cancel", device_, [&](std::string&) {
                {
                    std::lock_guard const lock(mutex_);
                    if (closed_)
                    {
                        return illegalMethodCall;
                    }
                    if (status_ != AsyncStatus::Started)
                    {
                        return S_OK;
                    }
                    status_ = AsyncStatus::Canceled;
                }
                cancelled_();
                return S_OK;
            });
        }

        HRESULT STDMETHODCALLTYPE Close() override
        {
            return Call("AsyncOperation.Close", device_, [&](std::string&) {
                std::lock_guard const lock(mutex_);
                if (status_ == AsyncStatus::Started)
                {
                    return illegalStateChange;
                }
                closed_ = true;
                return S_OK;
            });
        }

    private:
        char const* ClassName() const noexcept override
        {
            return OperationClassName<Result>();
        }

        void Settle(AsyncStatus status, HRESULT error, Ref<Result> result)
        {
            std::lock_guard const lock(mutex_);
            if (status_ == AsyncStatus::Started)
            {
                status_ = status;
                error_ = error;
                result_ = std::move(result);
            }
        }

        template <typename T, typename Value>
        HRESULT Read(Method method, T* value, Value read)
        {
            return Call(method, device_, [&](std::string& result) {
                if (!value)
                {
                    return E_POINTER;
                }
                std::lock_guard const lock(mutex_);
                if (closed_)
                {
                    return illegalMethodCall;
                }
                *value = read();
                result = Text(*value);
                return S_OK;
            });
        }

        std::string const device_;
        std::function<void()> const cancelled_;
        UINT32 const number_ = NextOperationNumber();
        std::mutex mutex_;
        AsyncStatus status_ = AsyncStatus::Started;
        HRESULT error_ = S_OK;
        Ref<Result> result_;
        Ref<Handler> handler_;
        bool handlerAssigned_ = false;
        bool closed_ = false;
    };

    using PairingOperation = AsyncOperation<platform::IDevicePairingResult>;
    using UnpairingOperation = AsyncOperation<platform::IDeviceUnpairingResult>;
} // namespace simulator
