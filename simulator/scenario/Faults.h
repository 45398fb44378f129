// What is wrong with a text, collected to be told at once.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <cstddef>

namespace simulator
{
    // A text as a fault shows it: in quotes, and shortened where it is long.
    std::string InQuotes(std::string_view text);

    class Faults
    {
    public:
        explicit Faults(std::string_view source);

        void Add(std::size_t line, std::string_view reason);

        bool AreThere() const;

        // A ScenarioError with all of them, one a line, in the order of their lines; of many the first hundred.
        [[noreturn]] void Throw() const;

    private:
        struct Fault
        {
            std::size_t line;
            std::string reason;
        };

        std::string m_source;
        std::vector<Fault> m_faults;
    };
} // namespace simulator
