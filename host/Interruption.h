#pragma once

namespace host
{
    // For as long as this lives, Ctrl+C and Ctrl+Break ask the program to end instead of ending it.
    class Interruption
    {
    public:
        Interruption();
        ~Interruption();
        Interruption(Interruption const&) = delete;
        Interruption& operator=(Interruption const&) = delete;

        bool Requested() const;
    };
} // namespace host
