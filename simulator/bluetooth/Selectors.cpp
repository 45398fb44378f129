#include "simulator/bluetooth/Selectors.h"

#include "simulator/bluetooth/Endpoints.h"

namespace simulator
{
    namespace
    {
        std::string Text(bool value)
        {
            return std::string("System.StructuredQueryType.Boolean#") + (value ? "True" : "False");
        }

        // A search of the air is asked for, or not, in the same breath.
        std::string Select(Protocol protocol, std::string const& condition, bool inquire)
        {
            return std::string("System.Devices.DevObjectType:=5 AND System.Devices.Aep.ProtocolId:=\"") +
                   (protocol == Protocol::Le ? "{BB7BB05E-5972-42B5-94FC-76EAA7084D49}"
                                             : "{E0CBF06C-CD8B-4647-BB8A-263B43F0F974}") +
                   "\" AND (" + condition + " OR System.Devices.Aep.Bluetooth.IssueInquiry:=" + Text(inquire) + ")";
        }

        std::string HasAddress(std::uint64_t address)
        {
            return "System.Devices.Aep.DeviceAddress:=\"" + AddressText(address) + "\"";
        }

        std::string Doubled(std::string const& text)
        {
            std::string result;
            for (char const character : text)
            {
                result.append(character == '"' ? 2 : 1, character);
            }
            return result;
        }
    } // namespace

    std::string PairingSelector(Protocol protocol, bool paired)
    {
        return Select(protocol, "System.Devices.Aep.IsPaired:=" + Text(paired), !paired);
    }

    std::string ConnectionSelector(Protocol protocol, bool connected)
    {
        return Select(protocol, "System.Devices.Aep.IsConnected:=" + Text(connected), !connected);
    }

    std::string NameSelector(Protocol protocol, std::string const& name)
    {
        return Select(protocol, "System.ItemNameDisplay:=\"" + Doubled(name) + "\"", true);
    }

    std::string AddressSelector(Protocol protocol, std::uint64_t address)
    {
        return Select(protocol, HasAddress(address), true);
    }

    std::string TypedAddressSelector(std::uint64_t address, std::int32_t type)
    {
        return Select(Protocol::Le,
                      "(" + HasAddress(address) +
                          " AND System.Devices.Aep.Bluetooth.Le.AddressType:=" + std::to_string(type) + ")",
                      true);
    }

    std::string ClassSelector(std::int32_t majorClass, std::int32_t minorClass)
    {
        return Select(Protocol::Classic,
                      "(System.Devices.Aep.Bluetooth.Cod.Major:=" + std::to_string(majorClass) +
                          " AND System.Devices.Aep.Bluetooth.Cod.Minor:=" + std::to_string(minorClass) + ")",
                      true);
    }

    std::string AppearanceSelector(std::uint16_t appearance)
    {
        return Select(Protocol::Le, "System.Devices.Aep.Bluetooth.Le.Appearance:=" + std::to_string(appearance), true);
    }
} // namespace simulator
