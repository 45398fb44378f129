// Delegates of the platform, made of functions.
#pragma once

#include "platform/abi/Enumeration.h"
#include "tests/simulator/Com.h"

#include <atomic>
#include <functional>
#include <utility>

namespace test
{
    // Any delegate: AddedHandler, PairingCompletedHandler, ...
    template <typename Delegate>
    class Handler;

    template <typename Delegate, typename... Arguments>
    class HandlerBase : public Delegate
    {
    public:
        using Function = std::function<HRESULT(Arguments...)>;

        explicit HandlerBase(Function function)
            : m_function(std::move(function))
        {
        }

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
        {
            if (id != iid_of<::IUnknown> && id != iid_of<Delegate> && id != iid_of<platform::IAgileObject>)
            {
                *object = nullptr;
                return E_NOINTERFACE;
            }
            *object = this;
            AddRef();
            return S_OK;
        }

        ULONG STDMETHODCALLTYPE AddRef() override
        {
            return ++m_references;
        }

        ULONG STDMETHODCALLTYPE Release() override
        {
            ULONG const left = --m_references;
            if (left == 0)
            {
                delete this;
            }
            return left;
        }

        HRESULT STDMETHODCALLTYPE Invoke(Arguments... arguments) override
        {
            return m_function(arguments...);
        }

    protected:
        virtual ~HandlerBase() = default;

    private:
        std::atomic<ULONG> m_references = 1;
        Function m_function;
    };

    template <typename Sender, typename Args>
    class Handler<TypedEventHandler<Sender, Args>> final
        : public HandlerBase<TypedEventHandler<Sender, Args>, Sender, Args>
    {
        using HandlerBase<TypedEventHandler<Sender, Args>, Sender, Args>::HandlerBase;
    };

    template <typename T>
    class Handler<AsyncOperationCompletedHandler<T>> final
        : public HandlerBase<AsyncOperationCompletedHandler<T>, IAsyncOperation<T>*, AsyncStatus>
    {
        using HandlerBase<AsyncOperationCompletedHandler<T>, IAsyncOperation<T>*, AsyncStatus>::HandlerBase;
    };

    template <typename T, typename Progress>
    class Handler<AsyncOperationWithProgressCompletedHandler<T, Progress>> final
        : public HandlerBase<AsyncOperationWithProgressCompletedHandler<T, Progress>,
                             IAsyncOperationWithProgress<T, Progress>*, AsyncStatus>
    {
        using HandlerBase<AsyncOperationWithProgressCompletedHandler<T, Progress>,
                          IAsyncOperationWithProgress<T, Progress>*, AsyncStatus>::HandlerBase;
    };

    template <typename Delegate, typename Function>
    Com<Delegate> On(Function function)
    {
        Com<Delegate> handler;
        *handler.Put() = new Handler<Delegate>(std::move(function));
        return handler;
    }
} // namespace test
