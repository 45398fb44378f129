#pragma once

#include "Windows.Foundation.h"
#include "platform/abi/Collections.h"

#include <concepts>
#include <utility>
#include <vector>

namespace winrt::Windows::Foundation::Collections
{
    using platform::CollectionChange;

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

    // A map of objects by texts, which is all that devices have.
    template <typename K, typename V>
    struct IMapView : IInspectable
    {
        using IInspectable::IInspectable;

        V Lookup(param::hstring const& key) const;
        V TryLookup(param::hstring const& key) const; // null where there is no such key
        [[nodiscard]] bool HasKey(param::hstring const& key) const;
        [[nodiscard]] std::uint32_t Size() const;
    };

    struct IVectorChangedEventArgs : IInspectable
    {
        using IInspectable::IInspectable;

        [[nodiscard]] Collections::CollectionChange CollectionChange() const;
        [[nodiscard]] std::uint32_t Index() const;
    };

    template <typename T>
    struct VectorChangedEventHandler;

    // A vector that tells of its changes. What it has of a vector goes through the vector's own interface.
    template <typename T>
    struct IObservableVector : IInspectable
    {
        using IInspectable::IInspectable;

        event_token VectorChanged(VectorChangedEventHandler<T> const& handler) const;
        void VectorChanged(event_token const& token) const noexcept;

        T GetAt(std::uint32_t index) const;
        [[nodiscard]] std::uint32_t Size() const;
        IVectorView<T> GetView() const;
        void RemoveAt(std::uint32_t index) const;
        void Append(T const& value) const;
        void Clear() const;

        operator IVector<T>() const
        {
            return this->template as<IVector<T>>();
        }
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

    template <typename K, typename V>
    struct abi<Windows::Foundation::Collections::IMapView<K, V>>
    {
        using type = platform::IMapView<argument_t<K>, argument_t<V>>;
    };

    template <>
    struct abi<Windows::Foundation::Collections::IVectorChangedEventArgs>
    {
        using type = platform::IVectorChangedEventArgs;
    };

    template <typename T>
    struct abi<Windows::Foundation::Collections::VectorChangedEventHandler<T>>
    {
        using type = platform::VectorChangedEventHandler<argument_t<T>>;
    };

    template <typename T>
    struct abi<Windows::Foundation::Collections::IObservableVector<T>>
    {
        using type = platform::IObservableVector<argument_t<T>>;
    };
} // namespace winrt::impl

#include "impl/observable_vector.h"
#include "impl/vector.h"

namespace winrt::impl
{
    // A place in a list of the platform, which the range keeps alive.
    template <typename T>
    struct place_in_view
    {
        T operator*() const
        {
            return vector->GetAt(index);
        }
        place_in_view& operator++() noexcept
        {
            ++index;
            return *this;
        }
        bool operator==(place_in_view const&) const = default;

        Windows::Foundation::Collections::IVectorView<T> const* vector;
        std::uint32_t index;
    };
} // namespace winrt::impl

namespace winrt::Windows::Foundation::Collections
{
    template <typename T>
    struct VectorChangedEventHandler : IUnknown
    {
        using IUnknown::IUnknown;

        template <std::invocable<IObservableVector<T> const&, IVectorChangedEventArgs const&> Function>
        VectorChangedEventHandler(Function function)
            : IUnknown(impl::make_delegate<impl::abi_t<VectorChangedEventHandler>, IObservableVector<T>,
                                           IVectorChangedEventArgs>(std::move(function)),
                       take_ownership_from_abi)
        {
        }
    };

    inline CollectionChange IVectorChangedEventArgs::CollectionChange() const
    {
        Collections::CollectionChange value{};
        check_hresult(impl::interface_of(*this)->get_CollectionChange(&value));
        return value;
    }

    inline std::uint32_t IVectorChangedEventArgs::Index() const
    {
        UINT32 value{};
        check_hresult(impl::interface_of(*this)->get_Index(&value));
        return value;
    }

    template <typename T>
    T IIterator<T>::Current() const
    {
        auto value = impl::empty_value<T>();
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
        auto value = impl::empty_value<T>();
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

    // For a range-based for.
    template <typename T>
    impl::place_in_view<T> begin(IVectorView<T> const& vector) noexcept
    {
        return {&vector, 0};
    }

    template <typename T>
    impl::place_in_view<T> end(IVectorView<T> const& vector)
    {
        return {&vector, vector.Size()};
    }

    template <typename T>
    T IVector<T>::GetAt(std::uint32_t index) const
    {
        auto value = impl::empty_value<T>();
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

    template <typename K, typename V>
    V IMapView<K, V>::Lookup(param::hstring const& key) const
    {
        auto value = impl::empty_value<V>();
        check_hresult(impl::interface_of(*this)->Lookup(static_cast<HSTRING>(get_abi(key)), impl::out(value)));
        return value;
    }

    template <typename K, typename V>
    V IMapView<K, V>::TryLookup(param::hstring const& key) const
    {
        auto value = impl::empty_value<V>();
        HRESULT const result = impl::interface_of(*this)->Lookup(static_cast<HSTRING>(get_abi(key)), impl::out(value));
        if (result != impl::error_out_of_bounds)
        {
            check_hresult(result);
        }
        return value;
    }

    template <typename K, typename V>
    bool IMapView<K, V>::HasKey(param::hstring const& key) const
    {
        boolean found{};
        check_hresult(impl::interface_of(*this)->HasKey(static_cast<HSTRING>(get_abi(key)), &found));
        return found;
    }

    template <typename K, typename V>
    std::uint32_t IMapView<K, V>::Size() const
    {
        UINT32 value{};
        check_hresult(impl::interface_of(*this)->get_Size(&value));
        return value;
    }

    template <typename T>
    event_token IObservableVector<T>::VectorChanged(VectorChangedEventHandler<T> const& handler) const
    {
        EventRegistrationToken token{};
        check_hresult(impl::interface_of(*this)->add_VectorChanged(impl::interface_of(handler), &token));
        return {token.value};
    }

    template <typename T>
    void IObservableVector<T>::VectorChanged(event_token const& token) const noexcept
    {
        impl::interface_of(*this)->remove_VectorChanged(EventRegistrationToken{token.value});
    }

    template <typename T>
    T IObservableVector<T>::GetAt(std::uint32_t index) const
    {
        return this->template as<IVector<T>>().GetAt(index);
    }

    template <typename T>
    std::uint32_t IObservableVector<T>::Size() const
    {
        return this->template as<IVector<T>>().Size();
    }

    template <typename T>
    IVectorView<T> IObservableVector<T>::GetView() const
    {
        return this->template as<IVector<T>>().GetView();
    }

    template <typename T>
    void IObservableVector<T>::RemoveAt(std::uint32_t index) const
    {
        this->template as<IVector<T>>().RemoveAt(index);
    }

    template <typename T>
    void IObservableVector<T>::Append(T const& value) const
    {
        this->template as<IVector<T>>().Append(value);
    }

    template <typename T>
    void IObservableVector<T>::Clear() const
    {
        this->template as<IVector<T>>().Clear();
    }
} // namespace winrt::Windows::Foundation::Collections

namespace winrt
{
    // A vector of this process, without a lock of its own.
    template <typename T>
    Windows::Foundation::Collections::IVector<T> single_threaded_vector(std::vector<T>&& values = {})
    {
        auto* const object = new impl::vector<T>(std::move(values));
        return {static_cast<platform::IVector<impl::argument_t<T>>*>(object), take_ownership_from_abi};
    }

    // A vector of this process that any thread may call at any time. Each call is sound by itself; what holds from
    // one call to the next, such as a size, is the callers' affair.
    template <typename T>
    Windows::Foundation::Collections::IObservableVector<T> multi_threaded_observable_vector(
        std::vector<T>&& values = {})
    {
        auto* const object = new impl::observable_vector<T>(std::move(values));
        return {static_cast<platform::IObservableVector<impl::argument_t<T>>*>(object), take_ownership_from_abi};
    }
} // namespace winrt
