#pragma once

#include "host/Library.h"
#include "host/Outcome.h"
#include "host/Progress.h"
#include "host/Request.h"

#include <optional>

namespace host
{
    // Prints the name of each device that the library reports; the outcome counts them.
    Outcome ListPhones(VorlinkFactory factory, Request const& request, Progress& progress);

    // Waits until the library can be asked to pair the phone: it has reported the name, or its search is over.
    // Otherwise the outcome tells why there is nothing to ask for.
    std::optional<Outcome> AwaitPhone(VorlinkFactory factory, Request const& request, Progress& progress);
} // namespace host
