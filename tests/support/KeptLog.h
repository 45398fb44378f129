// A callback that shows what stands in the log when the host hears of an outcome.
#pragma once

#include "tests/support/Host.h"
#include "tests/support/LogFile.h"

namespace test
{
    inline std::vector<std::string> logAtReport;

    inline void KeepLogThenReport(PairReport report)
    {
        logAtReport = Log();
        Host::Callback(report);
    }
} // namespace test
