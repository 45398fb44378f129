#pragma once

#include "simulator/scenario/Scenario.h"

namespace simulator
{
    struct ListingLabels
    {
        char const* banner;
        char const* instance;
        char const* description;
        char const* className;
        char const* classGuid;
        char const* manufacturer;
        char const* status;
        char const* driver;
        char const* started; // the status of all devices
    };

    ListingLabels const& LabelsIn(ListingLanguage language) noexcept;
} // namespace simulator
