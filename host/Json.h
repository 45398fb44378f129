#pragma once

#include <nlohmann/json.hpp>

namespace host
{
    using Json = nlohmann::ordered_json; // keys in the order in which a reader wants them
} // namespace host
