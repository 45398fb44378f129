#include "simulator/scenario/FirstScenario.h"

#include "simulator/scenario/DefaultScenario.h"
#include "simulator/scenario/NamedFile.h"
#include "simulator/scenario/StateFile.h"

#include <utility>

namespace simulator
{
    FirstScenario LoadFirstScenario()
    {
        auto const file = FileNamedBy("VORLINK_SCENARIO");
        try
        {
            auto scenario = file.empty() ? ParseScenario(DefaultScenario(), "default scenario")
                                         : ParseScenario(ReadText(file), Utf8Name(file));
            ApplyStateFile(scenario);
            return {std::move(scenario), {}};
        }
        catch (ScenarioError const& error)
        {
            Complain(error.what());
            return {{}, error.what()};
        }
    }
} // namespace simulator
