/* The header in the C of 1990; compiling this is the test. Its sizes are a part of the binary contract. */
#include "interface/vorlink_c.h"

#include <stddef.h>

#define REQUIRE(name, condition) typedef char name[(condition) ? 1 : -1]

REQUIRE(report_size, sizeof(vorlink_pair_report) == 304);
REQUIRE(report_address, offsetof(vorlink_pair_report, address) == 8);
REQUIRE(report_name, offsetof(vorlink_pair_report, name) == 16);
REQUIRE(report_address_text, offsetof(vorlink_pair_report, address_text) == 272);
REQUIRE(version_size, sizeof(vorlink_version_number) == 32);
REQUIRE(version_text, offsetof(vorlink_version_number, text) == 12);
