#include "simulator/VorlinkSimulator.h"
#include "simulator/com/Lifetime.h"
#include "simulator/neighbourhood/Neighbourhood.h"
#include "simulator/neighbourhood/Operation.h"
#include "simulator/neighbourhood/RadioSwitch.h"
#include "simulator/neighbourhood/WatcherRun.h"
#include "simulator/trace/Call.h"
#include "simulator/trace/TraceFile.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace
{
    using namespace simulator;

    std::string& LastError()
    {
        thread_local std::string error;
        return error;
    }

    // What a verb throws when it cannot take effect.
    struct Refused : std::runtime_error
    {
        using std::runtime_error::runtime_error;
    };

    // Every verb that can fail passes here: no exception leaves it, and the thread's last error follows it.
    template <typename Body>
    int Verb(Body body) noexcept
    {
        try
        {
            LastError().clear();
            body();
            return 1;
        }
        catch (std::exception const& error)
        {
            try
            {
                LastError() = error.what();
            }
            catch (std::exception const&) // no memory for the text either
            {
            }
            return 0;
        }
    }

    std::string_view Given(char const* text, char const* what)
    {
        if (!text)
        {
            throw Refused(std::string(what) + " is null");
        }
        return text;
    }

    std::string Given(char const* id)
    {
        return std::string(Given(id, "the endpoint's identifier"));
    }

    Neighbour& Known(Neighbourhood& neighbourhood, std::string const& id)
    {
        auto* const neighbour = FindNeighbour(neighbourhood, id);
        if (!neighbour)
        {
            throw Refused("no endpoint " + id);
        }
        return *neighbour;
    }

    void CheckInRange(Neighbour const& neighbour)
    {
        if (!neighbour.inRange.value_or(neighbour.endpoint.appearsAtMs != never))
        {
            throw Refused(neighbour.endpoint.id + " is not in range");
        }
    }

    void MoveDevice(std::string const& id, bool inRange)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        auto const& neighbour = Known(neighbourhood, id);
        auto const& endpoint = neighbour.endpoint;
        // Until a verb has spoken, an endpoint with times of its own may be either.
        bool const always = endpoint.appearsAtMs == 0 && endpoint.leavesAtMs == never;
        if (inRange && neighbour.inRange.value_or(always))
        {
            throw Refused(id + " is in range already");
        }
        if (!inRange)
        {
            CheckInRange(neighbour);
        }
        Happen(neighbourhood, {id, inRange, {}});
    }

    void ForgetCalls()
    {
        ForgetFailures();
        ClearTrace();
    }

    int EndOperation(char const* id, bool unpairing, Outcome const& outcome)
    {
        return Verb([&] {
            auto const endpoint = Given(id);
            if (!ForceOutcome(endpoint, unpairing, outcome))
            {
                throw Refused(std::string("no ") + (unpairing ? "unpairing" : "pairing") + " of " + endpoint +
                              " is pending");
            }
        });
    }

    size_t CopyText(std::string_view text, char* buffer, size_t size)
    {
        if (buffer && size)
        {
            auto const copied = std::min(text.size(), size - 1);
            std::memcpy(buffer, text.data(), copied);
            buffer[copied] = '\0';
        }
        return text.size() + 1;
    }

    template <typename Change>
    void ForEachRun(Change change)
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            for (auto const& run : neighbourhood.runs)
            {
                change(*run);
            }
        }
        neighbourhood.changed.notify_all();
    }
} // namespace

char const* SimulatorLastError(void)
{
    return LastError().c_str();
}

void SimulatorReset(void)
{
    Verb([] {
        RestartWithFirstScenario();
        ForgetCalls();
        ReopenTraceFile();
    });
}

int SimulateScenario(char const* toml)
{
    return Verb([&] {
        Restart(ParseScenario(Given(toml, "the scenario"), "scenario"));
        ForgetCalls();
    });
}

size_t SimulatorCheckScenario(char const* toml, char const* sourceName, char* buffer, size_t size)
{
    Verb([&] { ParseScenario(Given(toml, "the scenario"), sourceName ? sourceName : "scenario"); });
    return CopyText(LastError(), buffer, size);
}

int SimulateDeviceAppears(char const* id)
{
    return Verb([&] { MoveDevice(Given(id), true); });
}

int SimulateDeviceRepeats(char const* id)
{
    return Verb([&] {
        auto const endpoint = Given(id);
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        CheckInRange(Known(neighbourhood, endpoint));
        Happen(neighbourhood, {.id = endpoint, .again = true});
    });
}

int SimulateDeviceLeaves(char const* id)
{
    return Verb([&] { MoveDevice(Given(id), false); });
}

int SimulateDeviceChanges(char const* id, char const* property, char const* value)
{
    return Verb([&] {
        auto const endpoint = Given(id);
        std::string const name(Given(property, "the property"));
        auto parsed = ParseValue(name, Given(value, "the value"));
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        Known(neighbourhood, endpoint);
        Happen(neighbourhood, {endpoint, std::nullopt, {{name, std::move(parsed)}}});
    });
}

void SimulateEnumerationCompletes(void)
{
    Verb([] { ForEachRun(CompleteEnumeration); });
}

void SimulateWatchersAbort(void)
{
    Verb([] { ForEachRun(Abort); });
}

int SimulateRadioState(int32_t state)
{
    return Verb([&] {
        using platform::RadioState;
        auto const asked = static_cast<RadioState>(state);
        if (asked != RadioState::On && asked != RadioState::Off && asked != RadioState::Disabled)
        {
            throw Refused("no switch leads to radio state " + std::to_string(state));
        }
        if (!SwitchRadio(asked))
        {
            throw Refused("there is no adapter");
        }
    });
}

int SimulatePairingCompletes(char const* id, int32_t status)
{
    return EndOperation(id, false, {.status = status});
}

int SimulateUnpairingCompletes(char const* id, int32_t status)
{
    return EndOperation(id, true, {.status = status});
}

int SimulatePairingFails(char const* id, int32_t hresult)
{
    return EndOperation(id, false, {.failure = hresult});
}

int SimulateUnpairingFails(char const* id, int32_t hresult)
{
    return EndOperation(id, true, {.failure = hresult});
}

int SimulateFailure(char const* method, int32_t hresult)
{
    return SimulateLaterFailure(method, 0, hresult);
}

int SimulateLaterFailure(char const* method, uint32_t calls, int32_t hresult)
{
    return Verb([&] {
        auto const name = Given(method, "the method");
        if (!IsMethod(name))
        {
            throw Refused("no method " + std::string(name));
        }
        QueueFailure(name, calls, hresult);
    });
}

void SimulatorHoldEvents(void)
{
    Verb([] { HoldEvents(true); });
}

void SimulatorReleaseEvents(void)
{
    Verb([] { HoldEvents(false); });
}

int SimulatorWaitIdle(uint32_t milliseconds)
{
    return Verb([&] {
        if (!WaitIdle(std::chrono::milliseconds(milliseconds)))
        {
            throw Refused("events are still under way");
        }
    });
}

int SimulatorWaitForTrace(char const* text, uint32_t count, uint32_t milliseconds)
{
    return Verb([&] {
        if (!WaitForTrace(Given(text, "the text"), count, milliseconds))
        {
            throw Refused("the trace has too few such lines");
        }
    });
}

size_t SimulatorTrace(char* buffer, size_t size)
{
    std::string text;
    Verb([&] { text = TraceText(); });
    return CopyText(text, buffer, size);
}

size_t SimulatorTraceJson(char* buffer, size_t size)
{
    std::string text;
    Verb([&] { text = TraceJson(); });
    return CopyText(text, buffer, size);
}

void SimulatorClearTrace(void)
{
    Verb([] { ClearTrace(); });
}

uint32_t SimulatorLiveObjects(void)
{
    return LiveObjects();
}
