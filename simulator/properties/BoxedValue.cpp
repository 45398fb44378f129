#include "simulator/properties/BoxedValue.h"

#include "simulator/com/Object.h"
#include "simulator/properties/MismatchedValue.h"

#include <objbase.h>
#include <winstring.h>

#include <cstddef>
#include <type_traits>

namespace simulator
{
    namespace
    {
        using platform::PropertyType;

        template <typename T>
        HRESULT Give(T from, T* to)
        {
            *to = from;
            return S_OK;
        }

        HRESULT Give(bool from, boolean* to)
        {
            *to = from;
            return S_OK;
        }

        HRESULT Give(std::string const& from, HSTRING* to)
        {
            return MakeHstring(from, to);
        }

        HRESULT Give(Guid const& from, GUID* to)
        {
            return IIDFromString(Widen(from.text).c_str(), to);
        }

        HRESULT Give(DateTime from, platform::DateTime* to)
        {
            to->UniversalTime = from.ticks;
            return S_OK;
        }

        // What each kind of value is on the outside: the interface's argument, what crosses, what it is called.
        template <typename ArgumentType, typename CrossingType, PropertyType propertyType>
        struct Crossing
        {
            using Argument = ArgumentType;
            using Type = CrossingType;
            static constexpr PropertyType type = propertyType;
        };

        template <typename T>
        struct Outside;

        template <>
        struct Outside<bool> : Crossing<boolean, boolean, PropertyType::Boolean>
        {
            static constexpr char const* className = "Windows.Foundation.IReference`1<Boolean>";
        };

        template <>
        struct Outside<std::uint8_t> : Crossing<platform::UInt8, UINT8, PropertyType::UInt8>
        {
            static constexpr char const* className = "Windows.Foundation.IReference`1<UInt8>";
        };

        template <>
        struct Outside<std::uint16_t> : Crossing<UINT16, UINT16, PropertyType::UInt16>
        {
            static constexpr char const* className = "Windows.Foundation.IReference`1<UInt16>";
        };

        template <>
        struct Outside<std::int32_t> : Crossing<INT32, INT32, PropertyType::Int32>
        {
            static constexpr char const* className = "Windows.Foundation.IReference`1<Int32>";
        };

        template <>
        struct Outside<std::uint32_t> : Crossing<UINT32, UINT32, PropertyType::UInt32>
        {
            static constexpr char const* className = "Windows.Foundation.IReference`1<UInt32>";
        };

        template <>
        struct Outside<std::string> : Crossing<HSTRING, HSTRING, PropertyType::String>
        {
            static constexpr char const* className = "Windows.Foundation.IReference`1<String>";
        };

        template <>
        struct Outside<Guid> : Crossing<GUID, GUID, PropertyType::Guid>
        {
            static constexpr char const* className = "Windows.Foundation.IReference`1<Guid>";
        };

        template <>
        struct Outside<DateTime> : Crossing<platform::DateTime, platform::DateTime, PropertyType::DateTime>
        {
            static constexpr char const* className = "Windows.Foundation.IReference`1<Windows.Foundation.DateTime>";
        };

        template <>
        struct Outside<Bytes> : Crossing<platform::UInt8, UINT8, PropertyType::UInt8Array>
        {
            static constexpr char const* className = "Windows.Foundation.IReferenceArray`1<UInt8>";
        };

        template <>
        struct Outside<Texts> : Crossing<HSTRING, HSTRING, PropertyType::StringArray>
        {
            static constexpr char const* className = "Windows.Foundation.IReferenceArray`1<String>";
        };

        template <>
        struct Outside<Guids> : Crossing<GUID, GUID, PropertyType::GuidArray>
        {
            static constexpr char const* className = "Windows.Foundation.IReferenceArray`1<Guid>";
        };

        template <typename T>
        class BoxedValue final : public Object<MismatchedValue, platform::IReference<typename Outside<T>::Argument>>
        {
        public:
            explicit BoxedValue(T value)
                : m_value(std::move(value))
            {
            }

            char const* ClassName() const noexcept override
            {
                return Outside<T>::className;
            }

            HRESULT STDMETHODCALLTYPE get_Value(typename Outside<T>::Type* value) override
            {
                return value ? Give(m_value, value) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE get_Type(PropertyType* value) override
            {
                return value ? (*value = Outside<T>::type, S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE get_IsNumericScalar(boolean* value) override
            {
                return value ? (*value = std::is_integral_v<T> && !std::is_same_v<T, bool>, S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE GetUInt8(UINT8* value) override
            {
                return As<PropertyType::UInt8>(value);
            }

            HRESULT STDMETHODCALLTYPE GetUInt16(UINT16* value) override
            {
                return As<PropertyType::UInt16>(value);
            }

            HRESULT STDMETHODCALLTYPE GetInt32(INT32* value) override
            {
                return As<PropertyType::Int32>(value);
            }

            HRESULT STDMETHODCALLTYPE GetUInt32(UINT32* value) override
            {
                return As<PropertyType::UInt32>(value);
            }

            HRESULT STDMETHODCALLTYPE GetBoolean(boolean* value) override
            {
                return As<PropertyType::Boolean>(value);
            }

            HRESULT STDMETHODCALLTYPE GetString(HSTRING* value) override
            {
                return As<PropertyType::String>(value);
            }

            HRESULT STDMETHODCALLTYPE GetGuid(GUID* value) override
            {
                return As<PropertyType::Guid>(value);
            }

            HRESULT STDMETHODCALLTYPE GetDateTime(platform::DateTime* value) override
            {
                return As<PropertyType::DateTime>(value);
            }

        private:
            template <PropertyType type, typename Out>
            HRESULT As(Out* value)
            {
                if constexpr (type == Outside<T>::type)
                {
                    return get_Value(value);
                }
                else
                {
                    return value ? typeMismatch : E_POINTER;
                }
            }

            T const m_value;
        };

        void LetGo(HSTRING text)
        {
            WindowsDeleteString(text);
        }

        template <typename T>
        void LetGo(T const&)
        {
        }

        // A copy that is the caller's to free; of an empty list, nothing.
        template <typename List, typename Out>
        HRESULT GiveAll(List const& from, UINT32* size, Out** to)
        {
            if (!size || !to)
            {
                return E_POINTER;
            }
            *size = 0;
            *to = nullptr;
            if (from.empty())
            {
                return S_OK;
            }
            auto* const copy = static_cast<Out*>(CoTaskMemAlloc(from.size() * sizeof(Out)));
            if (!copy)
            {
                return E_OUTOFMEMORY;
            }
            std::size_t count = 0;
            for (auto const& one : from)
            {
                if (HRESULT const code = Give(one, &copy[count]); FAILED(code))
                {
                    while (count > 0)
                    {
                        LetGo(copy[--count]);
                    }
                    CoTaskMemFree(copy);
                    return code;
                }
                ++count;
            }
            *size = static_cast<UINT32>(count);
            *to = copy;
            return S_OK;
        }

        template <typename List>
        class BoxedArray final
            : public Object<MismatchedValue, platform::IReferenceArray<typename Outside<List>::Argument>>
        {
        public:
            explicit BoxedArray(List value)
                : m_value(std::move(value))
            {
            }

            char const* ClassName() const noexcept override
            {
                return Outside<List>::className;
            }

            HRESULT STDMETHODCALLTYPE get_Value(UINT32* size, typename Outside<List>::Type** value) override
            {
                return GiveAll(m_value, size, value);
            }

            HRESULT STDMETHODCALLTYPE get_Type(PropertyType* value) override
            {
                return value ? (*value = Outside<List>::type, S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE get_IsNumericScalar(boolean* value) override
            {
                return value ? (*value = false, S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE GetUInt8Array(UINT32* size, UINT8** value) override
            {
                return As<PropertyType::UInt8Array>(size, value);
            }

            HRESULT STDMETHODCALLTYPE GetStringArray(UINT32* size, HSTRING** value) override
            {
                return As<PropertyType::StringArray>(size, value);
            }

            HRESULT STDMETHODCALLTYPE GetGuidArray(UINT32* size, GUID** value) override
            {
                return As<PropertyType::GuidArray>(size, value);
            }

        private:
            template <PropertyType type, typename Out>
            HRESULT As(UINT32* size, Out** value)
            {
                if constexpr (type == Outside<List>::type)
                {
                    return get_Value(size, value);
                }
                else
                {
                    return size && value ? typeMismatch : E_POINTER;
                }
            }

            List const m_value;
        };

        template <typename T>
        inline constexpr bool isList = false;

        template <typename T>
        inline constexpr bool isList<std::vector<T>> = true;
    } // namespace

    Ref<::IInspectable> Box(Value const& value)
    {
        return std::visit(
            []<typename T>([[maybe_unused]] T const& held) -> Ref<::IInspectable> {
                if constexpr (std::is_same_v<T, std::monostate>)
                {
                    return {};
                }
                else
                {
                    using Boxed = std::conditional_t<isList<T>, BoxedArray<T>, BoxedValue<T>>;
                    return Ref<::IInspectable>::Adopt(
                        static_cast<platform::IPropertyValue*>(Make<Boxed>(held).Detach()));
                }
            },
            value);
    }
} // namespace simulator
