#pragma once

#include "host/Failure.h"
#include "host/Library.h"
#include "host/Request.h"

#include <chrono>
#include <functional>
#include <string>
#include <variant>

namespace host
{
    enum class SearchEnd
    {
        Complete, // the library has ended it by itself
        Enough,   // the name's taker has; the library searches on
        TimeLimit,
        Interrupted, // by Ctrl+C or Ctrl+Break
    };

    using SearchResult = std::variant<SearchEnd, Failure>;

    // Takes the name of a device that the library has reported, in UTF-8; false when that is enough.
    using NameCallback = std::function<bool(std::string const& name)>;

    using ElapsedCallback = std::function<void(std::chrono::seconds elapsed)>;

    // Has the library search for phones, within the request' time limit. Calls both on the caller's thread,
    // `progress` many times a second. Once a process.
    SearchResult SearchPhones(VorlinkFactory factory, Request const& request, NameCallback const& takeName,
                              ElapsedCallback const& progress);
} // namespace host
