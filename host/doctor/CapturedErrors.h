#pragma once

#include <string>

namespace host
{
    // For as long as this lives, what the process writes to standard error by the C library waits here: the simulator
    // tells there what is wrong with its scenario.
    class CapturedErrors
    {
    public:
        CapturedErrors();
        ~CapturedErrors();
        CapturedErrors(CapturedErrors const&) = delete;
        CapturedErrors& operator=(CapturedErrors const&) = delete;

        // Ends it.
        std::string Take();

    private:
        int m_before = -1;
        int m_pipe = -1;
    };
} // namespace host
