#include "simulator/objects/Snapshot.h"

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
        : m_id(std::move(id))
        , m_kind(kind)
        , m_properties(std::move(properties))
    {
    }

    std::string const& Snapshot::Id() const noexcept
    {
        return m_id;
    }

    platform::DeviceInformationKind Snapshot::Kind() const noexcept
    {
        return m_kind;
    }

    Properties Snapshot::All() const
    {
        std::lock_guard const lock(m_mutex);
        return m_properties;
    }

    bool Snapshot::IsTrue(std::string_view property, bool otherwise) const
    {
        std::lock_guard const lock(m_mutex);
        auto const found = m_properties.find(property);
        auto const* const flag = found == m_properties.end() ? nullptr : std::get_if<bool>(&found->second);
        return flag ? *flag : otherwise;
    }

    std::string Snapshot::String(std::string_view property) const
    {
        std::lock_guard const lock(m_mutex);
        auto const found = m_properties.find(property);
        auto const* const text = found == m_properties.end() ? nullptr : std::get_if<std::string>(&found->second);
        return text ? *text : std::string();
    }

    void Snapshot::Update(Properties const& changed)
    {
        std::lock_guard const lock(m_mutex);
        for (auto const& [name, value] : changed)
        {
            m_properties.insert_or_assign(name, value);
        }
    }
} // namespace simulator
