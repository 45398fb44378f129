// DeviceInformationUpdate: which properties of an endpoint changed, and to what.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Object.h"
#include "simulator/properties/Property.h"

namespace simulator
{
    class DeviceUpdate final : public Object<platform::IDeviceInformationUpdate, platform::IDeviceInformationUpdate2>
    {
    public:
        DeviceUpdate(std::string id, platform::DeviceInformationKind kind, Properties changed);

        // Null for an object that is not one of this module's.
        static Ref<DeviceUpdate> From(platform::IDeviceInformationUpdate* update);

        std::string const& Id() const noexcept;
        Properties const& Changed() const noexcept;

        HRESULT STDMETHODCALLTYPE get_Id(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE get_Properties(platform::PropertyMap** value) override;
        HRESULT STDMETHODCALLTYPE get_Kind(platform::DeviceInformationKind* value) override;

    private:
        char const* ClassName() const noexcept override;
        void* FindOwn(GUID const& id) noexcept override;

        std::string const m_id;
        platform::DeviceInformationKind const m_kind;
        Properties const m_changed;
    };
} // namespace simulator
