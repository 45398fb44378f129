// A device's pairing request of any kind, which writes down what is asked of it.
#pragma once

#include "pairing/Enumeration.h"
#include "platform/abi/Enumeration.h"
#include "tests/support/FakeObject.h"

#include <string>
#include <vector>

namespace test
{
    class FakePairingRequest final : public FakeObject<platform::IDevicePairingRequestedEventArgs>
    {
    public:
        explicit FakePairingRequest(platform::DevicePairingKinds kind)
            : m_kind(kind)
        {
        }

        vorlink::enumeration::DevicePairingRequestedEventArgs Projected()
        {
            AddRef();
            return {static_cast<platform::IDevicePairingRequestedEventArgs*>(this), winrt::take_ownership_from_abi};
        }

        std::vector<std::string> calls;

        HRESULT STDMETHODCALLTYPE get_DeviceInformation(platform::IDeviceInformation** value) override
        {
            *value = nullptr;
            return Note("get_DeviceInformation");
        }
        HRESULT STDMETHODCALLTYPE get_PairingKind(platform::DevicePairingKinds* value) override
        {
            *value = m_kind;
            return Note("get_PairingKind");
        }
        HRESULT STDMETHODCALLTYPE get_Pin(HSTRING* value) override
        {
            *value = nullptr;
            return Note("get_Pin");
        }
        HRESULT STDMETHODCALLTYPE Accept() override
        {
            return Note("Accept");
        }
        HRESULT STDMETHODCALLTYPE AcceptWithPin(HSTRING) override
        {
            return Note("AcceptWithPin");
        }
        HRESULT STDMETHODCALLTYPE GetDeferral(platform::IDeferral** deferral) override
        {
            *deferral = nullptr;
            return Note("GetDeferral");
        }

    private:
        HRESULT Note(char const* call)
        {
            calls.emplace_back(call);
            return S_OK;
        }

        platform::DevicePairingKinds m_kind;
    };
} // namespace test
