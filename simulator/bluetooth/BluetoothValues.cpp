#include "simulator/bluetooth/BluetoothValues.h"

#include "simulator/bluetooth/Endpoints.h"

namespace simulator
{
    namespace
    {
        using platform::BluetoothMajorClass;

        class DeviceId final : public Object<platform::IBluetoothDeviceId>
        {
        public:
            explicit DeviceId(std::string id)
                : m_id(std::move(id))
                , m_isLe(IsIdentifier(Protocol::Le, m_id))
            {
            }

            HRESULT STDMETHODCALLTYPE get_Id(HSTRING* value) override
            {
                return GetString("BluetoothDeviceId.get_Id", m_id, value, [&] { return m_id; });
            }

            HRESULT STDMETHODCALLTYPE get_IsClassicDevice(boolean* value) override
            {
                return Get("BluetoothDeviceId.get_IsClassicDevice", m_id, value, [&] { return boolean(!m_isLe); });
            }

            HRESULT STDMETHODCALLTYPE get_IsLowEnergyDevice(boolean* value) override
            {
                return Get("BluetoothDeviceId.get_IsLowEnergyDevice", m_id, value, [&] { return boolean(m_isLe); });
            }

        private:
            char const* ClassName() const noexcept override
            {
                return "Windows.Devices.Bluetooth.BluetoothDeviceId";
            }

            std::string const m_id;
            bool const m_isLe;
        };

        constexpr UINT32 mostMajor = 0x1F;
        constexpr UINT32 mostMinor = 0x3F;
        constexpr UINT32 mostServices = 0x7FF;
        constexpr UINT32 majorShift = 8;
        constexpr UINT32 minorShift = 2;
        constexpr UINT32 serviceShift = 13;

        class ClassOfDevice final : public Object<platform::IBluetoothClassOfDevice>
        {
        public:
            explicit ClassOfDevice(UINT32 raw)
                : m_raw(raw)
            {
            }

            HRESULT STDMETHODCALLTYPE get_RawValue(UINT32* value) override
            {
                return Get("BluetoothClassOfDevice.get_RawValue", Text(m_raw), value, [&] { return m_raw; });
            }

            HRESULT STDMETHODCALLTYPE get_MajorClass(BluetoothMajorClass* value) override
            {
                return Get("BluetoothClassOfDevice.get_MajorClass", Text(m_raw), value,
                           [&] { return static_cast<BluetoothMajorClass>(m_raw >> majorShift & mostMajor); });
            }

            HRESULT STDMETHODCALLTYPE get_MinorClass(INT32* value) override
            {
                return Get("BluetoothClassOfDevice.get_MinorClass", Text(m_raw), value,
                           [&] { return static_cast<INT32>(m_raw >> minorShift & mostMinor); });
            }

            HRESULT STDMETHODCALLTYPE get_ServiceCapabilities(UINT32* value) override
            {
                return Get("BluetoothClassOfDevice.get_ServiceCapabilities", Text(m_raw), value,
                           [&] { return m_raw >> serviceShift & mostServices; });
            }

        private:
            char const* ClassName() const noexcept override
            {
                return "Windows.Devices.Bluetooth.BluetoothClassOfDevice";
            }

            UINT32 const m_raw;
        };

        class Appearance final : public Object<platform::IBluetoothLEAppearance>
        {
        public:
            explicit Appearance(UINT16 raw)
                : m_raw(raw)
            {
            }

            HRESULT STDMETHODCALLTYPE get_RawValue(UINT16* value) override
            {
                return Get("BluetoothLEAppearance.get_RawValue", Text(m_raw), value, [&] { return m_raw; });
            }

            HRESULT STDMETHODCALLTYPE get_Category(UINT16* value) override
            {
                return Get("BluetoothLEAppearance.get_Category", Text(m_raw), value,
                           [&] { return static_cast<UINT16>(m_raw >> 6); });
            }

            HRESULT STDMETHODCALLTYPE get_SubCategory(UINT16* value) override
            {
                return Get("BluetoothLEAppearance.get_SubCategory", Text(m_raw), value,
                           [&] { return static_cast<UINT16>(m_raw & 63); });
            }

        private:
            char const* ClassName() const noexcept override
            {
                return "Windows.Devices.Bluetooth.BluetoothLEAppearance";
            }

            UINT16 const m_raw;
        };

        // A method that hands out an object unless an argument is wrong.
        template <typename Interface, typename MakeObject>
        HRESULT GetObjectIf(bool valid, Method method, std::string const& arguments, Interface** value, MakeObject make)
        {
            return Call(method, arguments, [&](std::string&) {
                if (!value)
                {
                    return E_POINTER;
                }
                *value = valid ? make().Detach() : nullptr;
                return valid ? S_OK : E_INVALIDARG;
            });
        }
    } // namespace

    Ref<platform::IBluetoothDeviceId> MakeDeviceId(std::string id)
    {
        return Ref<platform::IBluetoothDeviceId>::Adopt(Make<DeviceId>(std::move(id)).Detach());
    }

    Ref<platform::IBluetoothClassOfDevice> MakeClassOfDevice(std::uint32_t raw)
    {
        return Ref<platform::IBluetoothClassOfDevice>::Adopt(Make<ClassOfDevice>(raw).Detach());
    }

    Ref<platform::IBluetoothLEAppearance> MakeAppearance(std::uint16_t raw)
    {
        return Ref<platform::IBluetoothLEAppearance>::Adopt(Make<Appearance>(raw).Detach());
    }

    HRESULT DeviceIdFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("BluetoothDeviceId.ActivateInstance", {}, instance);
    }

    HRESULT DeviceIdFactory::FromId(HSTRING id, platform::IBluetoothDeviceId** value)
    {
        auto const text = FromHstring(id);
        return GetObjectIf(IsIdentifier(Protocol::Classic, text) || IsIdentifier(Protocol::Le, text),
                           "BluetoothDeviceId.FromId", Quoted(text), value, [&] { return MakeDeviceId(text); });
    }

    HRESULT ClassOfDeviceFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("BluetoothClassOfDevice.ActivateInstance", {}, instance);
    }

    HRESULT ClassOfDeviceFactory::FromRawValue(UINT32 rawValue, platform::IBluetoothClassOfDevice** value)
    {
        return GetObject("BluetoothClassOfDevice.FromRawValue", Text(rawValue), value,
                         [&] { return MakeClassOfDevice(rawValue); });
    }

    HRESULT ClassOfDeviceFactory::FromParts(BluetoothMajorClass majorClass, INT32 minorClass, UINT32 capabilities,
                                            platform::IBluetoothClassOfDevice** value)
    {
        auto const major = static_cast<UINT32>(majorClass);
        auto const minor = static_cast<UINT32>(minorClass);
        return GetObjectIf(major <= mostMajor && minor <= mostMinor && capabilities <= mostServices,
                           "BluetoothClassOfDevice.FromParts",
                           Text(majorClass) + ", " + Text(minorClass) + ", " + Text(capabilities), value, [&] {
                               return MakeClassOfDevice(capabilities << serviceShift | major << majorShift |
                                                        minor << minorShift);
                           });
    }

    HRESULT AppearanceFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("BluetoothLEAppearance.ActivateInstance", {}, instance);
    }
} // namespace simulator
