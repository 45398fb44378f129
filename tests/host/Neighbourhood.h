#pragma once

#include <string_view>

// The programs that this test starts from now on meet the neighbourhood of this scenario.
void UseScenario(std::string_view toml);
