#include "simulator/objects/DeviceUpdate.h"

#include "simulator/properties/PropertyMap.h"
#include "simulator/trace/Call.h"

namespace simulator
{
    namespace
    {
        // {6B0C9A3C-2C0C-4F0E-9E6E-3B7A9C1F5D21}: known to this module alone.
        constexpr GUID ownUpdate{0x6B0C9A3C, 0x2C0C, 0x4F0E, {0x9E, 0x6E, 0x3B, 0x7A, 0x9C, 0x1F, 0x5D, 0x21}};
    } // namespace

    DeviceUpdate::DeviceUpdate(std::string id, platform::DeviceInformationKind kind, Properties changed)
        : m_id(std::move(id))
        , m_kind(kind)
        , m_changed(std::move(changed))
    {
    }

    Ref<DeviceUpdate> DeviceUpdate::From(platform::IDeviceInformationUpdate* update)
    {
        void* own = nullptr;
        update->QueryInterface(ownUpdate, &own);
        return Ref<DeviceUpdate>::Adopt(static_cast<DeviceUpdate*>(own));
    }

    std::string const& DeviceUpdate::Id() const noexcept
    {
        return m_id;
    }

    Properties const& DeviceUpdate::Changed() const noexcept
    {
        return m_changed;
    }

    HRESULT DeviceUpdate::get_Id(HSTRING* value)
    {
        return GetString("DeviceInformationUpdate.get_Id", m_id, value, [&] { return m_id; });
    }

    HRESULT DeviceUpdate::get_Properties(platform::PropertyMap** value)
    {
        return GetObject("DeviceInformationUpdate.get_Properties", m_id, value,
                         [&] { return MakePropertyMap(m_changed); });
    }

    HRESULT DeviceUpdate::get_Kind(platform::DeviceInformationKind* value)
    {
        return Get("DeviceInformationUpdate.get_Kind", m_id, value, [&] { return m_kind; });
    }

    char const* DeviceUpdate::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DeviceInformationUpdate";
    }

    void* DeviceUpdate::FindOwn(GUID const& id) noexcept
    {
        return id == ownUpdate ? this : nullptr;
    }
} // namespace simulator
