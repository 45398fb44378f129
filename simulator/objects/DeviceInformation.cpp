#include "simulator/objects/DeviceInformation.h"

#include "simulator/objects/DeviceUpdate.h"
#include "simulator/properties/PropertyMap.h"
#include "simulator/trace/Call.h"

namespace simulator
{
    DeviceInformation::DeviceInformation(std::string id, platform::DeviceInformationKind kind, Properties properties)
        : snapshot_(std::make_shared<Snapshot>(std::move(id), kind, std::move(properties)))
        , pairing_(Make<Pairing>(snapshot_))
    {
    }

    HRESULT DeviceInformation::get_Id(HSTRING* value)
    {
        return GetString("DeviceInformation.get_Id", snapshot_->Id(), value, [&] { return snapshot_->Id(); });
    }

    HRESULT DeviceInformation::get_Name(HSTRING* value)
    {
        return GetString("DeviceInformation.get_Name", snapshot_->Id(), value,
                         [&] { return snapshot_->String("System.ItemNameDisplay"); });
    }

    // An association endpoint has no interface that could be disabled.
    HRESULT DeviceInformation::get_IsEnabled(boolean* value)
    {
        return Get("DeviceInformation.get_IsEnabled", snapshot_->Id(), value, [] { return boolean{true}; });
    }

    HRESULT DeviceInformation::get_IsDefault(boolean* value)
    {
        return Get("DeviceInformation.get_IsDefault", snapshot_->Id(), value, [] { return boolean{false}; });
    }

    HRESULT DeviceInformation::get_EnclosureLocation(void** value)
    {
        return Call("DeviceInformation.get_EnclosureLocation", snapshot_->Id(), [&](std::string&) {
            return value ? (*value = nullptr, S_OK) : E_POINTER; // a Bluetooth device has no place in a case
        });
    }

    HRESULT DeviceInformation::get_Properties(platform::PropertyMap** value)
    {
        return GetObject("DeviceInformation.get_Properties", snapshot_->Id(), value,
                         [&] { return MakePropertyMap(snapshot_->All()); });
    }

    HRESULT DeviceInformation::Update(platform::IDeviceInformationUpdate* update)
    {
        return Call("DeviceInformation.Update", snapshot_->Id(), [&](std::string&) {
            if (!update)
            {
                return E_POINTER;
            }
            auto const own = DeviceUpdate::From(update);
            if (!own || own->Id() != snapshot_->Id())
            {
                return E_INVALIDARG;
            }
            snapshot_->Update(own->Changed());
            return S_OK;
        });
    }

    HRESULT DeviceInformation::GetThumbnailAsync(void** operation)
    {
        return Outside("DeviceInformation.GetThumbnailAsync", snapshot_->Id(), operation);
    }

    HRESULT DeviceInformation::GetGlyphThumbnailAsync(void** operation)
    {
        return Outside("DeviceInformation.GetGlyphThumbnailAsync", snapshot_->Id(), operation);
    }

    HRESULT DeviceInformation::get_Kind(platform::DeviceInformationKind* value)
    {
        return Get("DeviceInformation.get_Kind", snapshot_->Id(), value, [&] { return snapshot_->Kind(); });
    }

    HRESULT DeviceInformation::get_Pairing(platform::IDeviceInformationPairing** value)
    {
        return GetObject("DeviceInformation.get_Pairing", snapshot_->Id(), value, [&] { return pairing_; });
    }

    char const* DeviceInformation::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DeviceInformation";
    }
} // namespace simulator
