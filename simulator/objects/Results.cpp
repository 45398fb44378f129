#include "simulator/objects/Results.h"

#include "simulator/com/Object.h"
#include "simulator/trace/Call.h"

namespace simulator
{
    namespace
    {
        using platform::DevicePairingProtectionLevel;
        using platform::DevicePairingResultStatus;
        using platform::DeviceUnpairingResultStatus;

        class PairingResult final : public Object<platform::IDevicePairingResult>
        {
        public:
            PairingResult(std::string device, std::int32_t status, DevicePairingProtectionLevel used)
                : m_device(std::move(device))
                , m_status(static_cast<DevicePairingResultStatus>(status))
                , m_used(used)
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Devices.Enumeration.DevicePairingResult";
            }

            HRESULT STDMETHODCALLTYPE get_Status(DevicePairingResultStatus* value) override
            {
                return Get("DevicePairingResult.get_Status", m_device, value, [&] { return m_status; });
            }

            HRESULT STDMETHODCALLTYPE get_ProtectionLevelUsed(DevicePairingProtectionLevel* value) override
            {
                return Get("DevicePairingResult.get_ProtectionLevelUsed", m_device, value, [&] { return m_used; });
            }

        private:
            std::string const m_device;
            DevicePairingResultStatus const m_status;
            DevicePairingProtectionLevel const m_used;
        };

        class UnpairingResult final : public Object<platform::IDeviceUnpairingResult>
        {
        public:
            UnpairingResult(std::string device, std::int32_t status)
                : m_device(std::move(device))
                , m_status(static_cast<DeviceUnpairingResultStatus>(status))
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Devices.Enumeration.DeviceUnpairingResult";
            }

            HRESULT STDMETHODCALLTYPE get_Status(DeviceUnpairingResultStatus* value) override
            {
                return Get("DeviceUnpairingResult.get_Status", m_device, value, [&] { return m_status; });
            }

        private:
            std::string const m_device;
            DeviceUnpairingResultStatus const m_status;
        };
    } // namespace

    Ref<platform::IDevicePairingResult> MakePairingResult(std::string device, std::int32_t status,
                                                          DevicePairingProtectionLevel used)
    {
        return Ref<platform::IDevicePairingResult>::Adopt(
            Make<PairingResult>(std::move(device), status, used).Detach());
    }

    Ref<platform::IDeviceUnpairingResult> MakeUnpairingResult(std::string device, std::int32_t status)
    {
        return Ref<platform::IDeviceUnpairingResult>::Adopt(Make<UnpairingResult>(std::move(device), status).Detach());
    }
} // namespace simulator
