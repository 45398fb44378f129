// DeviceInformation: a device object, which is a snapshot of an endpoint.
#pragma once

#include "simulator/objects/CustomPairing.h"
#include "simulator/objects/Pairing.h"

#include <memory>

namespace simulator
{
    class DeviceInformation final : public Object<platform::IDeviceInformation, platform::IDeviceInformation2>
    {
    public:
        DeviceInformation(std::string id, platform::DeviceInformationKind kind, Properties properties);
        // Of those that the endpoint has, the device shows these.
        DeviceInformation(std::string id, platform::DeviceInformationKind kind, SharedProperties all,
                          SharedNames shown);

        HRESULT STDMETHODCALLTYPE get_Id(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE get_Name(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE get_IsEnabled(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_IsDefault(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_EnclosureLocation(void** value) override;
        HRESULT STDMETHODCALLTYPE get_Properties(platform::PropertyMap** value) override;
        HRESULT STDMETHODCALLTYPE Update(platform::IDeviceInformationUpdate* update) override;
        HRESULT STDMETHODCALLTYPE GetThumbnailAsync(platform::ThumbnailOperation** operation) override;
        HRESULT STDMETHODCALLTYPE GetGlyphThumbnailAsync(platform::ThumbnailOperation** operation) override;
        HRESULT STDMETHODCALLTYPE get_Kind(platform::DeviceInformationKind* value) override;
        HRESULT STDMETHODCALLTYPE get_Pairing(platform::IDeviceInformationPairing** value) override;

    private:
        char const* ClassName() const noexcept override;

        std::shared_ptr<Snapshot> const m_snapshot;
        Ref<Pairing> const m_pairing;
    };
} // namespace simulator
