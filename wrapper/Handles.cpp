#include "wrapper/Handles.h"

#include "wrapper/Failure.h"
#include "wrapper/State.h"

#include <algorithm>
#include <utility>

namespace wrapper
{
    namespace
    {
        auto FindHandle(State const& state, vorlink_t const* handle)
        {
            return std::ranges::find(state.handles, handle);
        }
    } // namespace

    // Never destroyed: the library may call back while the process ends.
    State& TheState()
    {
        static auto& state = *new State;
        return state;
    }

    void RequireOpen(State const& state, vorlink_t const* handle)
    {
        RequireNotNull(handle, "The handle");
        if (FindHandle(state, handle) == state.handles.end())
        {
            throw Failure{VORLINK_INVALID_ARGUMENT, "The handle is not open."};
        }
    }

    vorlink_t* OpenHandle()
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        // A number that never comes again, so that a handle kept beyond its closing is known. Nothing lies there.
        auto* const handle = reinterpret_cast<vorlink_t*>(++state.latestHandle); // NOLINT(performance-no-int-to-ptr)
        state.handles.push_back(handle);
        return handle;
    }

    void RequireOpen(vorlink_t const* handle)
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        RequireOpen(state, handle);
    }

    bool CloseHandleAndForget(vorlink_t const* handle)
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        RequireOpen(state, handle);
        bool const reports = ForgetPairing(state, handle);
        bool const phones = ForgetPhones(state, handle);
        state.handles.erase(FindHandle(state, handle));
        return reports || phones;
    }

    bool Forget(vorlink_t const* handle, std::int32_t operation)
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        RequireOpen(state, handle);
        switch (operation)
        {
        case VORLINK_PAIRING:
            return ForgetPairing(state, handle);
        case VORLINK_PHONE_WATCHER:
            return ForgetPhones(state, handle);
        default:
            throw Failure{VORLINK_INVALID_ARGUMENT, std::to_string(operation) + " is no operation to forget."};
        }
    }
} // namespace wrapper
