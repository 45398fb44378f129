#include "simulator/bluetooth/Pc.h"

#include "simulator/neighbourhood/Neighbourhood.h"

namespace simulator
{
    std::optional<Adapter> AdapterNow()
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        auto const& adapter = neighbourhood.scenario.adapter;
        return adapter.present ? std::optional(adapter) : std::nullopt;
    }

    Radio RadioNow()
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        return neighbourhood.scenario.radio;
    }

    std::string InterfaceId(Adapter const& adapter, std::string_view interfaceClass)
    {
        auto address = adapter.address;
        std::erase(address, ':');
        return "\\\\?\\USB#VID_0A12&PID_0001#" + address + "#" + std::string(interfaceClass);
    }

    std::string InterfaceSelector(std::string_view interfaceClass)
    {
        return "System.Devices.InterfaceClassGuid:=\"" + std::string(interfaceClass) +
               "\" AND System.Devices.InterfaceEnabled:=System.StructuredQueryType.Boolean#True";
    }
} // namespace simulator
