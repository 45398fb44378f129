#pragma once

#include <functional>
#include <istream>
#include <ostream>
#include <string>

namespace vorlink
{
    // What a plug-and-play listing holds of Bluetooth LE devices.
    struct ListingEvents
    {
        std::function<void(std::string const& line)> instanceFound; // a line with an LE instance identifier
        std::function<void(std::string const& piece)> addressFound; // the address piece of one that qualifies
    };

    // Walks the listing line by line and echoes what it reads. The line behind an instance identifier describes
    // the device; it qualifies by a mark that survives the tool's conversion to the console's code page.
    // The address piece is the fourth one between "&"; an identifier with fewer pieces is passed over.
    void ReadListing(std::istream& listing, std::ostream& echo, ListingEvents const& events);
} // namespace vorlink
