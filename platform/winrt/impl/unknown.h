#pragma once

#include "error.h"
#include "guid.h"

#include <cstddef>
#include <type_traits>
#include <utility>

namespace winrt
{
    namespace Windows::Foundation
    {
        struct IUnknown;
    }

    void* get_abi(Windows::Foundation::IUnknown const& object) noexcept;
    void** put_abi(Windows::Foundation::IUnknown& object) noexcept;
    void* detach_abi(Windows::Foundation::IUnknown& object) noexcept;

    struct take_ownership_from_abi_t
    {
    };
    inline constexpr take_ownership_from_abi_t take_ownership_from_abi{};

    namespace Windows::Foundation
    {
        // A reference to a platform object; each projected type derives from it and adds no data.
        struct IUnknown
        {
            IUnknown() noexcept = default;

            IUnknown(std::nullptr_t) noexcept {}

            IUnknown(void* object, take_ownership_from_abi_t) noexcept
                : m_object(static_cast<::IUnknown*>(object))
            {
            }

            IUnknown(IUnknown const& other) noexcept
                : m_object(other.m_object)
            {
                if (m_object)
                {
                    m_object->AddRef();
                }
            }

            IUnknown(IUnknown&& other) noexcept
                : m_object(std::exchange(other.m_object, nullptr))
            {
            }

            IUnknown& operator=(IUnknown const& other) noexcept
            {
                IUnknown(other).swap(*this);
                return *this;
            }

            IUnknown& operator=(IUnknown&& other) noexcept
            {
                IUnknown(std::move(other)).swap(*this);
                return *this;
            }

            ~IUnknown()
            {
                if (m_object)
                {
                    m_object->Release();
                }
            }

            explicit operator bool() const noexcept
            {
                return m_object != nullptr;
            }

            template <typename To>
            To as() const
            {
                To result{nullptr};
                if (m_object)
                {
                    check_hresult(m_object->QueryInterface(guid_of<To>(), put_abi(result)));
                }
                return result;
            }

            template <typename To>
            To try_as() const noexcept
            {
                To result{nullptr};
                if (m_object)
                {
                    m_object->QueryInterface(guid_of<To>(), put_abi(result));
                }
                return result;
            }

            void swap(IUnknown& other) noexcept
            {
                std::swap(m_object, other.m_object);
            }

            friend void* winrt::get_abi(IUnknown const& object) noexcept;
            friend void** winrt::put_abi(IUnknown& object) noexcept;
            friend void* winrt::detach_abi(IUnknown& object) noexcept;

            // Identity: one object whichever interface a reference holds.
            friend bool operator==(IUnknown const& left, IUnknown const& right) noexcept
            {
                return left.m_object == right.m_object ||
                       get_abi(left.try_as<IUnknown>()) == get_abi(right.try_as<IUnknown>());
            }

        private:
            ::IUnknown* m_object = nullptr;
        };

        struct IInspectable : IUnknown
        {
            using IUnknown::IUnknown;
            IInspectable(std::nullptr_t = nullptr) noexcept {}
        };
    } // namespace Windows::Foundation

    inline void* get_abi(Windows::Foundation::IUnknown const& object) noexcept
    {
        return object.m_object;
    }

    inline void** put_abi(Windows::Foundation::IUnknown& object) noexcept
    {
        object = nullptr;
        return reinterpret_cast<void**>(&object.m_object);
    }

    inline void* detach_abi(Windows::Foundation::IUnknown& object) noexcept
    {
        return std::exchange(object.m_object, nullptr);
    }

    namespace impl
    {
        template <>
        struct abi<Windows::Foundation::IUnknown>
        {
            using type = ::IUnknown;
        };

        template <>
        struct abi<Windows::Foundation::IInspectable>
        {
            using type = ::IInspectable;
        };

        // How a T crosses the boundary as an argument.
        template <typename T>
        struct argument
        {
            using type = abi_t<T>*;
        };

        template <>
        struct argument<hstring>
        {
            using type = HSTRING;
        };

        template <typename T>
        requires std::is_enum_v<T>
        struct argument<T>
        {
            using type = T;
        };

        template <typename T>
        using argument_t = typename argument<T>::type;

        // The interface behind a projected object, to call it.
        template <typename T>
        abi_t<T>* interface_of(T const& object) noexcept
        {
            return static_cast<abi_t<T>*>(get_abi(object));
        }

        // Where a call puts a T that it gives back.
        template <typename T>
        argument_t<T>* out(T& object) noexcept
        {
            if constexpr (std::is_enum_v<T>)
            {
                return &object;
            }
            else
            {
                return reinterpret_cast<argument_t<T>*>(put_abi(object));
            }
        }

        template <typename T>
        T empty_value()
        {
            if constexpr (std::is_same_v<T, hstring> || std::is_enum_v<T>)
            {
                return {};
            }
            else
            {
                return T{nullptr};
            }
        }

        // A T of its own from an argument that the caller keeps.
        template <typename T>
        T copy_argument(argument_t<T> value)
        {
            if constexpr (std::is_enum_v<T>)
            {
                return static_cast<T>(value);
            }
            else if constexpr (std::is_same_v<T, hstring>)
            {
                UINT32 length = 0;
                wchar_t const* text = WindowsGetStringRawBuffer(value, &length);
                return hstring(std::wstring_view(text, length));
            }
            else
            {
                if (value)
                {
                    value->AddRef();
                }
                return T{value, take_ownership_from_abi};
            }
        }

        // The caller of a projected object's method gets a reference of its own.
        template <typename T>
        argument_t<T> hand_out(T object) noexcept
        {
            return static_cast<argument_t<T>>(detach_abi(object));
        }
    } // namespace impl
} // namespace winrt
