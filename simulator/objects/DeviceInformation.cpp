#include "simulator/objects/DeviceInformation.h"

#include "simulator/objects/DeviceUpdate.h"
#include "simulator/objects/Pictures.h"
#include "simulator/objects/Thumbnail.h"
#include "simulator/properties/PropertyMap.h"
#include "simulator/trace/Call.h"

namespace simulator
{
    DeviceInformation::DeviceInformation(std::string id, platform::DeviceInformationKind kind, Properties properties)
        : DeviceInformation(std::move(id), kind, std::make_shared<Properties>(std::move(properties)), nullptr)
    {
    }

    DeviceInformation::DeviceInformation(std::string id, platform::DeviceInformationKind kind, SharedProperties all,
                                         SharedNames shown)
        : m_snapshot(std::make_shared<Snapshot>(std::move(id), kind, std::move(all), std::move(shown)))
        , m_pairing(Make<Pairing>(m_snapshot))
    {
    }

    HRESULT DeviceInformation::get_Id(HSTRING* value)
    {
        return GetString("DeviceInformation.get_Id", m_snapshot->Id(), value, [&] { return m_snapshot->Id(); });
    }

    HRESULT DeviceInformation::get_Name(HSTRING* value)
    {
        return GetString("DeviceInformation.get_Name", m_snapshot->Id(), value,
                         [&] { return m_snapshot->String("System.ItemNameDisplay"); });
    }

    // An association endpoint has no interface that could be disabled, or be the default of its class: unless something
    // says otherwise, it is enabled and no default.
    HRESULT DeviceInformation::get_IsEnabled(boolean* value)
    {
        return Get("DeviceInformation.get_IsEnabled", m_snapshot->Id(), value,
                   [&] { return boolean{m_snapshot->IsTrue("System.Devices.InterfaceEnabled", true)}; });
    }

    HRESULT DeviceInformation::get_IsDefault(boolean* value)
    {
        return Get("DeviceInformation.get_IsDefault", m_snapshot->Id(), value,
                   [&] { return boolean{m_snapshot->IsTrue("System.Devices.IsDefault")}; });
    }

    HRESULT DeviceInformation::get_EnclosureLocation(void** value)
    {
        return Call("DeviceInformation.get_EnclosureLocation", m_snapshot->Id(), [&](std::string&) {
            return value ? (*value = nullptr, S_OK) : E_POINTER; // a Bluetooth device has no place in a case
        });
    }

    HRESULT DeviceInformation::get_Properties(platform::PropertyMap** value)
    {
        return GetObject("DeviceInformation.get_Properties", m_snapshot->Id(), value,
                         [&] { return MakePropertyMap(m_snapshot->All()); });
    }

    HRESULT DeviceInformation::Update(platform::IDeviceInformationUpdate* update)
    {
        return Call("DeviceInformation.Update", m_snapshot->Id(), [&](std::string&) {
            if (!update)
            {
                return E_POINTER;
            }
            auto const own = DeviceUpdate::From(update);
            if (!own || own->Id() != m_snapshot->Id())
            {
                return E_INVALIDARG;
            }
            m_snapshot->Update(own->Changed());
            return S_OK;
        });
    }

    HRESULT DeviceInformation::GetThumbnailAsync(platform::ThumbnailOperation** operation)
    {
        return GetObject("DeviceInformation.GetThumbnailAsync", m_snapshot->Id(), operation,
                         [&] { return OpenThumbnail(m_snapshot->Id(), pictures::icon); });
    }

    HRESULT DeviceInformation::GetGlyphThumbnailAsync(platform::ThumbnailOperation** operation)
    {
        return GetObject("DeviceInformation.GetGlyphThumbnailAsync", m_snapshot->Id(), operation,
                         [&] { return OpenThumbnail(m_snapshot->Id(), pictures::glyph); });
    }

    HRESULT DeviceInformation::get_Kind(platform::DeviceInformationKind* value)
    {
        return Get("DeviceInformation.get_Kind", m_snapshot->Id(), value, [&] { return m_snapshot->Kind(); });
    }

    HRESULT DeviceInformation::get_Pairing(platform::IDeviceInformationPairing** value)
    {
        return GetObject("DeviceInformation.get_Pairing", m_snapshot->Id(), value, [&] { return m_pairing; });
    }

    char const* DeviceInformation::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DeviceInformation";
    }
} // namespace simulator
