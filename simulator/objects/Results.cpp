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
                : device_(std::move(device))
                , status_(static_cast<DevicePairingResultStatus>(status))
                , used_(used)
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Devices.Enumeration.DevicePairingResult";
            }

            HRESULT STDMETHODCALLTYPE get_Status(DevicePairingResultStatus* value) override
            {
                return Get("DevicePairingResult.get_Status", device_, value, [&] { return status_; });
            }

            HRESULT STDMETHODCALLTYPE get_ProtectionLevelUsed(DevicePairingProtectionLevel* value) override
            {
                return Get("DevicePairingResult.get_ProtectionLevelUsed", device_, value, [&] { return used_; });
            }

        private:
            std::string const device_;
            DevicePairingResultStatus const status_;
            DevicePairingProtectionLevel const used_;
        };

        class UnpairingResult final : public Object<platform::IDeviceUnpairingResult>
        {
        public:
            UnpairingResult(std::string device, std::int32_t status)
                : device_(std::move(device))
                , status_(static_cast<DeviceUnpairingResultStatus>(status))
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Devices.Enumeration.DeviceUnpairingResult";
            }

            HRESULT STDMETHODCALLTYPE get_Status(DeviceUnpairingResultStatus* value) override
            {
                return Get("DeviceUnpairingResult.get_Status", device_, value, [&] { return status_; });
            }

        private:
            std::string const device_;
            DeviceUnpairingResultStatus const status_;
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
