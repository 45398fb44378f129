#pragma once

#include "Windows.Foundation.h"

#include "platform/abi/collections.h"

#include <vector>

namespace winrt::Windows::Foundation::Collections
{
    template <typename T>
    struct IIterator : IInspectable
    {
        using IInspectable::IInspectable;

        [[nodiscard]] T Current() const;
        [[nodiscard]] bool HasCurrent() const;
        bool MoveNext() const;
    };

    template <typename T>
    struct IIterable : IInspectable
    {
        using IInspectable::IInspectable;

        IIterator<T> First() const;
    };

    template <typename T>
    struct IVectorView : IInspectable
    {
        using IInspectable::IInspectable;

        T GetAt(std::uint32_t index) const;
        [[nodiscard]] std::uint32_t Size() const;
    };

    template <typename T>
    struct IVector : IInspectable
    {
        using IInspectable::IInspectable;

        T GetAt(std::uint32_t index) const;
        [[nodiscard]] std::uint32_t Size() const;
        IVectorView<T> GetView() const;
        void RemoveAt(std::uint32_t index) const;
        void Append(T const& value) const;
        void Clear() const;

        operator IIterable<T>() const
        {
            return this->template as<IIterable<T>>();
        }
    };
} // namespace winrt::Windows::Foundation::Collections

namespace winrt::impl
{
    template <typename T>
    struct abi<Windows::Foundation::Collections::IIterator<T>>
    {
        using type = platform::IIterator<argument_t<T>>;
    };

    template <typename T>
    struct abi<Windows::Foundation::Collections::IIterable<T>>
    {
        using type = platform::IIterable<argument_t<T>>;
    };

    template <typename T>
    struct abi<Windows::Foundation::Collections::IVectorView<T>>
    {
        using type = platform::IVectorView<argument_t<T>>;
    };

    template <typename T>
    struct abi<Windows::Foundation::Collections::IVector<T>>
    {
        using type = platform::IVector<argument_t<T>>;
    };
} // namespace winrt::impl

#include "impl/vector.h"

namespace winrt::Windows::Foundation::Collections
{
    template <typename T>
    T IIterator<T>::Current() const
    {
        T value = impl::empty_value<T>();
        check_hresult(impl::interface_of(*this)->get_Current(impl::out(value)));
        return value;
    }

    template <typename T>
    bool IIterator<T>::HasCurrent() const
    {
        boolean value{};
        check_hresult(impl::interface_of(*this)->get_HasCurrent(&value));
        return value;
    }

    template <typename T>
    bool IIterator<T>::MoveNext() const
    {
        boolean value{};
        check_hresult(impl::interface_of(*this)->MoveNext(&value));
        return value;
    }

    template <typename T>
    IIterator<T> IIterable<T>::First() const
    {
        IIterator<T> value{nullptr};
        check_hresult(impl::interface_of(*this)->First(impl::out(value)));
        return value;
    }

    template <typename T>
    T IVectorView<T>::GetAt(std::uint32_t index) const
    {
        T value = impl::empty_value<T>();
        check_hresult(impl::interface_of(*this)->GetAt(index, impl::out(value)));
        return value;
    }

    template <typename T>
    std::uint32_t IVectorView<T>::Size() const
    {
        UINT32 value{};
        check_hresult(impl::interface_of(*this)->get_Size(&value));
        return value;
    }

    template <typename T>
    T IVector<T>::GetAt(std::uint32_t index) const
    {
        T value = impl::empty_value<T>();
        check_hresult(impl::interface_of(*this)->GetAt(index, impl::out(value)));
        return value;
    }

    template <typename T>
    std::uint32_t IVector<T>::Size() const
    {
        UINT32 value{};
        check_hresult(impl::interface_of(*this)->get_Size(&value));
        return value;
    }

    template <typename T>
    IVectorView<T> IVector<T>::GetView() const
    {
        IVectorView<T> value{nullptr};
        check_hresult(impl::interface_of(*this)->GetView(impl::out(value)));
        return value;
    }

    template <typename T>
    void IVector<T>::RemoveAt(std::uint32_t index) const
    {
        check_hresult(impl::interface_of(*this)->RemoveAt(index));
    }

    template <typename T>
    void IVector<T>::Append(T const& value) const
    {
        check_hresult(impl::interface_of(*this)->Append(static_cast<impl::argument_t<T>>(get_abi(value))));
    }

    template <typename T>
    void IVector<T>::Clear() const
    {
        check_hresult(impl::interface_of(*this)->Clear());
    }
} // namespace winrt::Windows::Foundation::Collections

namespace winrt
{
    // A vector of this process, without a lock of its own.
    template <typename T>
    Windows::Foundation::Collections::IVector<T> single_threaded_vector(std::vector<T>&& values = {})
    {
        return impl::make_vector<T, impl::no_mutex>(std::move(values));
    }

    // A vector of this process that any thread may call at any time. Each call is sound by itself; what holds from
    // one call to the next, such as a size, is the callers' affair.
    template <typename T>
    Windows::Foundation::Collections::IVector<T> multi_threaded_vector(std::vector<T>&& values = {})
    {
        return impl::make_vector<T, std::shared_mutex>(std::move(values));
    }
} // namespace winrt
