#include "simulator/scenario/DeviceNode.h"

#include <algorithm>
#include <cctype>

namespace simulator
{
    namespace
    {
        template <typename T>
        T const* Own(Endpoint const& endpoint, std::string_view property)
        {
            auto const own = endpoint.properties.find(property);
            return own == endpoint.properties.end() ? nullptr : std::get_if<T>(&own->second);
        }
    } // namespace

    std::string AddressDigits(std::string const& address, int (*letterCase)(int))
    {
        std::string digits;
        for (char const each : address)
        {
            if (each != ':')
            {
                digits += static_cast<char>(letterCase(each));
            }
        }
        return digits;
    }

    std::string InstanceIdOf(Endpoint const& endpoint)
    {
        if (auto const* const own = Own<std::string>(endpoint, "System.Devices.DeviceInstanceId"))
        {
            return *own;
        }
        auto const upper = AddressDigits(endpoint.address, std::toupper);
        if (endpoint.protocol == Protocol::Classic)
        {
            return R"(BTHENUM\Dev_)" + upper + R"(\7&2768a9f8&0&BluetoothDevice_)" + upper;
        }
        return R"(BTHLE\Dev_)" + AddressDigits(endpoint.address, std::tolower) + R"(\8&1a2b3c4d&0&)" + upper;
    }

    std::string_view InterfaceClassOf(Protocol protocol)
    {
        return protocol == Protocol::Classic ? "{00f40965-e89d-4487-9890-87c3abb211f4}"
                                             : "{781aee18-7733-4ce4-add0-91f41c67b592}";
    }

    std::string InterfacePathOf(Endpoint const& endpoint)
    {
        auto path = InstanceIdOf(endpoint);
        std::ranges::replace(path, '\\', '#');
        return R"(\\?\)" + path + "#" + std::string(InterfaceClassOf(endpoint.protocol));
    }

    Guid ContainerIdOf(Endpoint const& endpoint)
    {
        auto const* const own = Own<Guid>(endpoint, "System.Devices.Aep.ContainerId");
        return own ? *own : Guid{};
    }
} // namespace simulator
