// One round of each flow, as it goes when nothing fails.
#pragma once

#include "interface/Vorlink.h"
#include "tests/faults/Faults.h"

#include <cstddef>
#include <string>
#include <vector>

namespace test
{
    // Prepares the flow in a neighbourhood of its own; the log is on.
    void Arrange(Flow flow);

    // The round itself, up to where its last effect is seen, also where something of it fails. An exception of an
    // operation leaves it.
    void Act(Flow flow);

    // So that another round goes as the first did.
    void Rearrange(Flow flow);

    // Whether a round has done all that it should.
    bool HasWorked(Flow flow);

    // Whether the library still pairs, in a neighbourhood of its own. What an earlier one has left is let go of.
    bool GoesOn();

    std::size_t ReportCount(); // that the host has had, in all of the process
    std::size_t RecordCount(); // in the log, but for those of the lookup behind a pairing
    void ForgetReportsAndRecords();

    // The platform's methods that a round calls.
    std::vector<std::string> CallsOf(Flow flow);
} // namespace test
