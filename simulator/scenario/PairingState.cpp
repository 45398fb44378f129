#include "simulator/scenario/PairingState.h"

#include <utility>

namespace simulator
{
    namespace
    {
        constexpr std::pair<std::string_view, bool> words[] = {{"paired ", true}, {"unpaired ", false}};

        std::string_view TakeLine(std::string_view& text)
        {
            auto const end = text.find('\n');
            auto line = text.substr(0, end);
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
            if (line.ends_with('\r'))
            {
                line.remove_suffix(1);
            }
            return line;
        }

        bool ReadLine(std::string_view line, PairingState& state)
        {
            for (auto const& [word, paired] : words)
            {
                if (line.starts_with(word) && line.size() > word.size())
                {
                    state[std::string(line.substr(word.size()))] = paired;
                    return true;
                }
            }
            return line.empty();
        }
    } // namespace

    std::string PairingStateText(PairingState const& state)
    {
        std::string text;
        for (auto const& [id, paired] : state)
        {
            if (id.find_first_of("\r\n") == std::string::npos)
            {
                text.append(words[paired ? 0 : 1].first).append(id).append("\n");
            }
        }
        return text;
    }

    PairingState ParsePairingState(std::string_view text, std::string_view sourceName)
    {
        PairingState state;
        for (int number = 1; !text.empty(); ++number)
        {
            if (!ReadLine(TakeLine(text), state))
            {
                throw ScenarioError(std::string(sourceName) + ":" + std::to_string(number) +
                                    ": 'paired' or 'unpaired' and an identifier are expected");
            }
        }
        return state;
    }

    void ApplyPairingState(PairingState const& state, Scenario& scenario)
    {
        for (auto& endpoint : scenario.endpoints)
        {
            if (auto const known = state.find(endpoint.id); known != state.end())
            {
                for (auto& [property, value] : PairingValues(endpoint, scenario.choices, known->second))
                {
                    endpoint.properties[property] = std::move(value);
                }
            }
        }
    }
} // namespace simulator
