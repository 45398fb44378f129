#pragma once

#include "interface/Vorlink.h"

#include <cstdint>
#include <string_view>

namespace vorlink
{
    // A report with its texts zero-filled. A name longer than its field runs on into the address text's; the
    // address text is then written over its tail. Neither leaves the two fields: what is longer is cut.
    PairReport MakeReport(std::uint64_t address, bool paired, std::string_view name, std::string_view addressText);
} // namespace vorlink
