#pragma once

#include <optional>

#include "host/arguments.h"
#include "host/library.h"
#include "host/outcome.h"
#include "host/progress.h"

// Prints the name of each device that the library reports; the outcome counts them.
Outcome ListPhones(VorlinkFactory factory, Arguments const& arguments, Progress& progress);

// Waits until the library can be asked to pair the phone: it has reported the name, or its search is over. Otherwise
// the outcome tells why there is nothing to ask for.
std::optional<Outcome> AwaitPhone(VorlinkFactory factory, Arguments const& arguments, Progress& progress);
