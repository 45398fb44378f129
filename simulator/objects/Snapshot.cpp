#include "simulator/objects/Snapshot.h"

#include "simulator/neighbourhood/Neighbourhood.h"

#include <algorithm>
#include <utility>

namespace simulator
{
    namespace
    {
        constexpr std::string_view alwaysShown[] = {
            "System.ItemNameDisplay",
            "System.Devices.DeviceInstanceId",
            "System.Devices.Icon",
            "System.Devices.GlyphIcon",
            "System.Devices.InterfaceEnabled",
            "System.Devices.IsDefault",
            "System.Devices.PhysicalDeviceLocation",
            "{A35996AB-11CF-4935-8B61-A6761081ECDF} 19",
            "System.Devices.Aep.CanPair",
            "System.Devices.Aep.IsPaired",
            "{A35996AB-11CF-4935-8B61-A6761081ECDF} 18",
            "{A35996AB-11CF-4935-8B61-A6761081ECDF} 13",
        };

        constexpr std::string_view alwaysFalse = "{A35996AB-11CF-4935-8B61-A6761081ECDF} 13";
    } // namespace

    std::vector<std::string> ShownProperties(std::vector<std::string> const& requested)
    {
        std::vector<std::string> shown(std::begin(alwaysShown), std::end(alwaysShown));
        shown.insert(shown.end(), requested.begin(), requested.end());
        return shown;
    }

    Properties Show(std::vector<std::string> const& shown, Properties const& all)
    {
        Properties properties;
        for (auto const& name : shown)
        {
            auto const known = all.find(name);
            properties.try_emplace(name, known != all.end()    ? known->second
                                         : name == alwaysFalse ? Value(false)
                                                               : Value());
        }
        return properties;
    }

    Snapshot::Snapshot(std::string id, platform::DeviceInformationKind kind, Properties properties)
        : id_(std::move(id))
        , kind_(kind)
        , properties_(std::move(properties))
    {
    }

    std::string const& Snapshot::Id() const noexcept
    {
        return id_;
    }

    platform::DeviceInformationKind Snapshot::Kind() const noexcept
    {
        return kind_;
    }

    Properties Snapshot::All() const
    {
        std::lock_guard const lock(mutex_);
        return properties_;
    }

    bool Snapshot::IsTrue(std::string_view property) const
    {
        std::lock_guard const lock(mutex_);
        return simulator::IsTrue(properties_, property);
    }

    std::string Snapshot::String(std::string_view property) const
    {
        std::lock_guard const lock(mutex_);
        auto const found = properties_.find(property);
        auto const* const text = found == properties_.end() ? nullptr : std::get_if<std::string>(&found->second);
        return text ? *text : std::string();
    }

    void Snapshot::Update(Properties const& changed)
    {
        std::lock_guard const lock(mutex_);
        for (auto const& [name, value] : changed)
        {
            properties_.insert_or_assign(name, value);
        }
    }
} // namespace simulator
