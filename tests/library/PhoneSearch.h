// What a search for a phone records, reports and begins.
#pragma once

#include "tests/library/PhoneHost.h"

namespace test
{
    inline std::string Visited(std::string const& name, std::string const& requested)
    {
        return Record(1222, search, "tname is " + name + " param name is " + requested);
    }

    inline std::string const found = Record(1225, search, "find device ");
    inline std::string const notFound = Record(1233, search, "Not Found dest  device");

    inline void ExpectNothingFound(PairReport const& report, std::string const& name)
    {
        EXPECT_EQ(report.address, 0u);
        EXPECT_EQ(report.paired, 0);
        EXPECT_EQ(Text(report.name), name);
        EXPECT_EQ(Text(report.addressText), "");
    }

    // Which endpoints a pairing was asked for.
    inline std::vector<std::string> PairingsBegun()
    {
        return Trace({"DeviceInformationCustomPairing.PairWithProtectionLevelAsync("});
    }
} // namespace test
