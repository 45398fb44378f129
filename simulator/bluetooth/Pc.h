// The PC's own side: which adapter and radio it has now, and what it calls them.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <optional>
#include <string>
#include <string_view>

namespace simulator
{
    std::optional<Adapter> AdapterNow();
    Radio RadioNow();

    // Interface classes of the two, as their selectors and identifiers write them.
    inline constexpr std::string_view adapterInterface = "{92383b0e-f90e-4ac9-8d44-8c2d0d0ebda2}";
    inline constexpr std::string_view radioInterface = "{a8804298-2d5f-42e3-9531-9c8c39eb29ce}";

    // Of the adapter and of its radio.
    std::string InterfaceId(Adapter const& adapter, std::string_view interfaceClass);
    std::string InterfaceSelector(std::string_view interfaceClass);
} // namespace simulator
