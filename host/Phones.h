#pragma once

#include "host/Arguments.h"
#include "host/Library.h"
#include "host/Outcome.h"
#include "host/Progress.h"

#include <optional>

namespace host
{
    // Prints the name of each device that the library reports; the outcome counts them.
    Outcome ListPhones(VorlinkFactory factory, Arguments const& arguments, Progress& progress);

    // Waits until the library can be asked to pair the phone: it has reported the name, or its search is over.
    // Otherwise the outcome tells why there is nothing to ask for.
    std::optional<Outcome> AwaitPhone(VorlinkFactory factory, Arguments const& arguments, Progress& progress);
} // namespace host
