// DevicePairingRequestedEventArgs: the device's request, which the program's handler answers.
#pragma once

#include "simulator/com/Object.h"
#include "simulator/neighbourhood/Operation.h"
#include "simulator/objects/Snapshot.h"

namespace simulator
{
    class PairingRequest final
        : public Object<platform::IDevicePairingRequestedEventArgs, platform::IDevicePairingRequestedEventArgs2>
    {
    public:
        PairingRequest(std::shared_ptr<Operation> operation, Snapshot const& device, platform::DevicePairingKinds kind,
                       std::string pin);

        HRESULT STDMETHODCALLTYPE get_DeviceInformation(platform::IDeviceInformation** value) override;
        HRESULT STDMETHODCALLTYPE get_PairingKind(platform::DevicePairingKinds* value) override;
        HRESULT STDMETHODCALLTYPE get_Pin(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE Accept() override;
        HRESULT STDMETHODCALLTYPE AcceptWithPin(HSTRING pin) override;
        HRESULT STDMETHODCALLTYPE GetDeferral(platform::IDeferral** deferral) override;
        HRESULT STDMETHODCALLTYPE AcceptWithPasswordCredential(void* credential) override;

    private:
        char const* ClassName() const noexcept override;

        std::shared_ptr<Operation> const m_operation;
        std::string const m_id;
        platform::DeviceInformationKind const m_deviceKind;
        Properties const m_properties;
        platform::DevicePairingKinds const m_kind;
        std::string const m_pin;
    };
} // namespace simulator
