// What a device object knows: an endpoint's identity and its properties as they were once.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/properties/Property.h"

#include <mutex>
#include <string>
#include <vector>

namespace simulator
{
    // The properties that a device object has whether or not they were asked for, then those asked for.
    SharedNames ShownProperties(std::vector<std::string> const& requested);

    // What does not apply to the endpoint is there without a value.
    Properties Show(std::vector<std::string> const& shown, Properties const& all);

    // Shared by a device object and its pairing objects, so that these follow the device's updates.
    class Snapshot
    {
    public:
        // `shown`: which of all; null for each.
        Snapshot(std::string id, platform::DeviceInformationKind kind, SharedProperties all, SharedNames shown);

        std::string const& Id() const noexcept;
        platform::DeviceInformationKind Kind() const noexcept;
        Properties All() const;
        // Of those that every device object shows. `otherwise`: where it is null.
        bool IsTrue(std::string_view property, bool otherwise = false) const;
        std::string String(std::string_view property) const;
        void Update(Properties const& changed);

    private:
        Properties Shown() const;
        Value Find(std::string_view property) const; // null for what there is none of

        std::string const m_id;
        platform::DeviceInformationKind const m_kind;
        mutable std::mutex m_mutex; // guards the two
        SharedProperties m_all;     // the platform's own, until an update makes them the device's
        SharedNames m_shown;
    };
} // namespace simulator
