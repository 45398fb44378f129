#pragma once

#include <cstdint>
#include <string>

namespace vorlink
{
    struct EndpointAddress
    {
        std::string text;         // hexadecimal digits without separators, letter case as in the identifier
        std::uint64_t number = 0; // the same as a number
    };

    // The remote device's address in an association endpoint's identifier, which reads
    // "Bluetooth#Bluetooth<adapter>-<device>", both addresses in colon-separated hexadecimal. An identifier
    // without "-" has none: text and number stay empty.
    EndpointAddress AddressOf(std::string const& identifier);
} // namespace vorlink
