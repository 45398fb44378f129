#include "simulator/scenario/ScenarioListing.h"

#include "simulator/scenario/ScenarioNames.h"

namespace simulator
{
    void ReadListing(TableReader& reader, Listing& listing)
    {
        reader.ReadName("language", names::listingLanguages, listing.language);
        constexpr auto most = std::numeric_limits<std::int32_t>::max();
        reader.ReadNumber("unrelated-devices", 0, most, listing.unrelatedDevices);
        reader.ReadNumber("duration-ms", 0, most, listing.durationMs); // not "never": the tool ends some time
        reader.Read("missing", listing.missing);
        reader.RejectOtherKeys();
    }
} // namespace simulator
