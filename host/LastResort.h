#pragma once

namespace host
{
    // Lets a failure that nobody can catch end the program with its documented exit code: abort() would end it
    // with 3, which means "not found" here, and an unhandled exception with a code that some shells cut to 0.
    // Where the platform ends the process itself (fail-fast on Windows), the exit code is the platform's.
    void InstallLastResort();
} // namespace host
