#include "simulator/scenario/ScenarioListing.h"

#include "simulator/scenario/ScenarioNames.h"

namespace simulator
{
    void ReadListing(TableReader& reader, Listing& listing)
    {
        if (auto const language = reader.ReadName("language", names::listingLanguages))
        {
            listing.language = static_cast<ListingLanguage>(*language);
        }
        Value unrelated = listing.unrelatedDevices;
        reader.Read("unrelated-devices", PropertyKind::Int32, unrelated);
        listing.unrelatedDevices = std::get<std::int32_t>(unrelated);
        if (listing.unrelatedDevices < 0)
        {
            reader.FailAt("unrelated-devices", "a number from 0 upwards is expected");
        }
        reader.ReadMilliseconds("duration-ms", listing.durationMs);
        if (listing.durationMs == never)
        {
            reader.FailAt("duration-ms", "the tool ends some time; 'missing = true' makes it print nothing");
        }
        reader.Read("missing", listing.missing);
        reader.RejectOtherKeys();
    }
} // namespace simulator
