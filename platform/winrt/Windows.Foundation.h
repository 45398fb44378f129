#pragma once

#include "base.h"

#include <concepts>
#include <cstdint>
#include <future>
#include <type_traits>
#include <utility>

namespace winrt::Windows::Foundation
{
    using platform::AsyncStatus;

    template <typename TResult>
    struct AsyncOperationCompletedHandler;

    template <typename TSender, typename TArgs>
    struct TypedEventHandler;

    struct IAsyncInfo : IInspectable
    {
        using IInspectable::IInspectable;
    };

    template <typename TResult>
    struct IAsyncOperation : IInspectable
    {
        using IInspectable::IInspectable;

        AsyncStatus Status() const;
        void Completed(AsyncOperationCompletedHandler<TResult> const& handler) const;
        TResult GetResults() const;
        TResult get() const; // waits for it; not for a thread that has a window's messages to answer
    };

    struct IClosable : IInspectable
    {
        using IInspectable::IInspectable;

        void Close() const;
    };

    struct Deferral : IInspectable
    {
        using IInspectable::IInspectable;
        Deferral() = delete;

        void Complete() const;
    };

    // A value in a box.
    template <typename T>
    struct IReference : IInspectable
    {
        using IInspectable::IInspectable;

        [[nodiscard]] T Value() const;
    };
} // namespace winrt::Windows::Foundation

namespace winrt::impl
{
    template <>
    struct abi<Windows::Foundation::IAsyncInfo>
    {
        using type = platform::IAsyncInfo;
    };

    template <>
    struct abi<Windows::Foundation::IClosable>
    {
        using type = platform::IClosable;
    };

    template <>
    struct abi<Windows::Foundation::Deferral>
    {
        using type = platform::IDeferral;
    };

    template <typename TResult>
    struct abi<Windows::Foundation::IAsyncOperation<TResult>>
    {
        using type = platform::IAsyncOperation<argument_t<TResult>>;
    };

    template <typename TResult>
    struct abi<Windows::Foundation::AsyncOperationCompletedHandler<TResult>>
    {
        using type = platform::AsyncOperationCompletedHandler<argument_t<TResult>>;
    };

    template <typename TSender, typename TArgs>
    struct abi<Windows::Foundation::TypedEventHandler<TSender, TArgs>>
    {
        using type = platform::TypedEventHandler<argument_t<TSender>, argument_t<TArgs>>;
    };

    template <typename T>
    struct abi<Windows::Foundation::IReference<T>>
    {
        using type = platform::IReference<argument_t<T>>;
    };

    template <>
    struct argument<bool>
    {
        using type = boolean;
    };

    template <>
    struct argument<std::int32_t>
    {
        using type = INT32;
    };
} // namespace winrt::impl

namespace winrt::Windows::Foundation
{
    template <typename TResult>
    struct AsyncOperationCompletedHandler : IUnknown
    {
        using IUnknown::IUnknown;

        template <std::invocable<IAsyncOperation<TResult> const&, AsyncStatus> Function>
        AsyncOperationCompletedHandler(Function function)
            : IUnknown(impl::make_delegate<impl::abi_t<AsyncOperationCompletedHandler>, IAsyncOperation<TResult>,
                                           AsyncStatus>(std::move(function)),
                       take_ownership_from_abi)
        {
        }
    };

    template <typename TSender, typename TArgs>
    struct TypedEventHandler : IUnknown
    {
        using IUnknown::IUnknown;

        template <std::invocable<TSender const&, TArgs const&> Function>
        TypedEventHandler(Function function)
            : IUnknown(impl::make_delegate<impl::abi_t<TypedEventHandler>, TSender, TArgs>(std::move(function)),
                       take_ownership_from_abi)
        {
        }
    };

    template <typename TResult>
    AsyncStatus IAsyncOperation<TResult>::Status() const
    {
        AsyncStatus value{};
        check_hresult(impl::interface_of(this->template as<IAsyncInfo>())->get_Status(&value));
        return value;
    }

    template <typename TResult>
    void IAsyncOperation<TResult>::Completed(AsyncOperationCompletedHandler<TResult> const& handler) const
    {
        check_hresult(impl::interface_of(*this)->put_Completed(impl::interface_of(handler)));
    }

    template <typename TResult>
    TResult IAsyncOperation<TResult>::GetResults() const
    {
        auto value = impl::empty_value<TResult>();
        check_hresult(impl::interface_of(*this)->GetResults(impl::out(value)));
        return value;
    }

    template <typename TResult>
    TResult IAsyncOperation<TResult>::get() const
    {
        if (Status() == AsyncStatus::Started)
        {
            std::promise<void> end; // dropped without a call, the handler ends the wait, too
            auto const ended = end.get_future();
            Completed([end = std::move(end)](IAsyncOperation const&, AsyncStatus) mutable { end.set_value(); });
            ended.wait();
        }
        if (Status() == AsyncStatus::Canceled)
        {
            throw_hresult(HRESULT_FROM_WIN32(ERROR_CANCELLED));
        }
        return GetResults();
    }

    inline void IClosable::Close() const
    {
        check_hresult(impl::interface_of(*this)->Close());
    }

    inline void Deferral::Complete() const
    {
        check_hresult(impl::interface_of(*this)->Complete());
    }

    template <typename T>
    T IReference<T>::Value() const
    {
        if constexpr (std::is_arithmetic_v<T>)
        {
            impl::argument_t<T> value{};
            check_hresult(impl::interface_of(*this)->get_Value(&value));
            return static_cast<T>(value);
        }
        else
        {
            T value;
            check_hresult(impl::interface_of(*this)->get_Value(impl::out(value)));
            return value;
        }
    }

    // Resumes where the wait began.
    template <typename TResult>
    impl::await_adapter<IAsyncOperation<TResult>, impl::apartment_context> operator co_await(
        IAsyncOperation<TResult> const& async)
    {
        return impl::await_adapter<IAsyncOperation<TResult>, impl::apartment_context>(async);
    }
} // namespace winrt::Windows::Foundation

namespace winrt
{
    // To be awaited: resumes on the thread that completes the operation, whatever apartment the wait began in.
    template <typename TResult>
    impl::await_adapter<Windows::Foundation::IAsyncOperation<TResult>, impl::any_context> resume_agile(
        Windows::Foundation::IAsyncOperation<TResult> const& async)
    {
        return impl::await_adapter<Windows::Foundation::IAsyncOperation<TResult>, impl::any_context>(async);
    }

    // What is in the box; null, and a value of another type, are the default.
    template <typename T>
    T unbox_value_or(Windows::Foundation::IInspectable const& value, T const& default_value)
    {
        auto const reference = value.try_as<Windows::Foundation::IReference<T>>();
        return reference ? reference.Value() : default_value;
    }
} // namespace winrt
