#include "simulator/properties/BoxedValue.h"

#include "simulator/com/Object.h"
#include "simulator/properties/MismatchedValue.h"

#include <objbase.h>

#include <type_traits>

namespace platform
{
    template <>
    inline constexpr GUID iid_of<simulator::IReference<boolean>>{
        0x3C00FD60, 0x2950, 0x5939, {0xA2, 0x1A, 0x2D, 0x12, 0xC5, 0xA0, 0x1B, 0x8A}};
    template <>
    inline constexpr GUID iid_of<simulator::IReference<INT32>>{
        0x548CEFBD, 0xBC8A, 0x5FA0, {0x8D, 0xF2, 0x95, 0x74, 0x40, 0xFC, 0x8B, 0xF4}};
    template <>
    inline constexpr GUID iid_of<simulator::IReference<HSTRING>>{
        0xFD416DFB, 0x2A07, 0x52EB, {0xAA, 0xE3, 0xDF, 0xCE, 0x14, 0x11, 0x6C, 0x05}};
    template <>
    inline constexpr GUID iid_of<simulator::IReference<GUID>>{
        0x7D50F649, 0x632C, 0x51F9, {0x84, 0x9A, 0xEE, 0x49, 0x42, 0x89, 0x33, 0xEA}};
} // namespace platform

namespace simulator
{
    namespace
    {
        using platform::PropertyType;

        HRESULT Give(bool from, boolean* to)
        {
            *to = from;
            return S_OK;
        }

        HRESULT Give(std::int32_t from, INT32* to)
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

        // What each kind of value is on the outside.
        template <typename T>
        struct Outside;

        template <>
        struct Outside<bool>
        {
            using Type = boolean;
            static constexpr PropertyType type = PropertyType::Boolean;
            static constexpr char const* className = "Windows.Foundation.IReference`1<Boolean>";
        };

        template <>
        struct Outside<std::int32_t>
        {
            using Type = INT32;
            static constexpr PropertyType type = PropertyType::Int32;
            static constexpr char const* className = "Windows.Foundation.IReference`1<Int32>";
        };

        template <>
        struct Outside<std::string>
        {
            using Type = HSTRING;
            static constexpr PropertyType type = PropertyType::String;
            static constexpr char const* className = "Windows.Foundation.IReference`1<String>";
        };

        template <>
        struct Outside<Guid>
        {
            using Type = GUID;
            static constexpr PropertyType type = PropertyType::Guid;
            static constexpr char const* className = "Windows.Foundation.IReference`1<Guid>";
        };

        template <typename T>
        class BoxedValue final : public Object<MismatchedValue, IReference<typename Outside<T>::Type>>
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
                return value ? (*value = Outside<T>::type == PropertyType::Int32, S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE GetInt32(INT32* value) override
            {
                return As(value);
            }

            HRESULT STDMETHODCALLTYPE GetBoolean(boolean* value) override
            {
                return As(value);
            }

            HRESULT STDMETHODCALLTYPE GetString(HSTRING* value) override
            {
                return As(value);
            }

            HRESULT STDMETHODCALLTYPE GetGuid(GUID* value) override
            {
                return As(value);
            }

        private:
            template <typename Out>
            HRESULT As(Out* value)
            {
                if constexpr (std::is_same_v<Out, typename Outside<T>::Type>)
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
                    return Ref<::IInspectable>::Adopt(
                        static_cast<platform::IPropertyValue*>(Make<BoxedValue<T>>(held).Detach()));
                }
            },
            value);
    }
} // namespace simulator
