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

    SharedNames ShownProperties(std::vector<std::string> const& requested)
    {
        std::vector<std::string> shown(std::begin(alwaysShown), std::end(alwaysShown));
        shown.insert(shown.end(), requested.begin(), requested.end());
        return std::make_shared<std::vector<std::string>>(std::move(shown));
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

    Snapshot::Snapshot(std::string id, platform::DeviceInformationKind kind, SharedProperties all, SharedNames shown)
        : m_id(std::move(id))
        , m_kind(kind)
        , m_all(std::move(all))
        , m_shown(std::move(shown))
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
        return Shown();
    }

    bool Snapshot::IsTrue(std::string_view property, bool otherwise) const
    {
        auto const value = Find(property);
        auto const* const flag = std::get_if<bool>(&value);
        return flag ? *flag : otherwise;
    }

    std::string Snapshot::String(std::string_view property) const
    {
        auto const value = Find(property);
        auto const* const text = std::get_if<std::string>(&value);
        return text ? *text : std::string();
    }

    void Snapshot::Update(Properties const& changed)
    {
        std::lock_guard const lock(m_mutex);
        auto own = std::make_shared<Properties>(Shown());
        for (auto const& [name, value] : changed)
        {
            own->insert_or_assign(name, value);
        }
        m_all = std::move(own);
        m_shown.reset();
    }

    Properties Snapshot::Shown() const
    {
        return m_shown ? Show(*m_shown, *m_all) : *m_all;
    }

    Value Snapshot::Find(std::string_view property) const
    {
        std::lock_guard const lock(m_mutex);
        auto const found = m_all->find(property);
        return found == m_all->end() ? Value() : found->second;
    }
} // namespace simulator
