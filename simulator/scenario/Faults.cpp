#include "simulator/scenario/Faults.h"

#include <algorithm>

namespace simulator
{
    namespace
    {
        constexpr std::size_t mostListed = 100;
    } // namespace

    std::string InQuotes(std::string_view text)
    {
        constexpr std::size_t most = 100;
        auto shown = text.substr(0, most);
        if (shown.size() == text.size())
        {
            return "'" + std::string(text) + "'";
        }
        while (!shown.empty() && (text[shown.size()] & 0xc0) == 0x80) // not within a character
        {
            shown.remove_suffix(1);
        }
        return "'" + std::string(shown) + "…'";
    }

    Faults::Faults(std::string_view source)
        : m_source(source)
    {
    }

    void Faults::Add(std::size_t line, std::string_view reason)
    {
        m_faults.push_back({line, std::string(reason)});
    }

    bool Faults::AreThere() const
    {
        return !m_faults.empty();
    }

    void Faults::Throw() const
    {
        auto faults = m_faults;
        std::ranges::stable_sort(faults, {}, &Fault::line);
        auto const listed = std::min(faults.size(), mostListed);
        std::string text;
        for (std::size_t index = 0; index < listed; ++index)
        {
            auto& [line, reason] = faults[index];
            // What it quotes may hold anything.
            std::ranges::replace_if(
                reason, [](unsigned char character) { return character < ' ' || character == 0x7f; }, ' ');
            text += (index == 0 ? "" : "\n") + m_source + ":" + std::to_string(line) + ": " + reason;
        }
        if (listed < faults.size())
        {
            text += "\n... and " + std::to_string(faults.size() - listed) + " more";
        }
        throw ScenarioError(text);
    }
} // namespace simulator
