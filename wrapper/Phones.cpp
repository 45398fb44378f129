#include "wrapper/Phones.h"

#include "wrapper/State.h"
#include "wrapper/Text.h"

#include <new>

namespace wrapper
{
    bool ForgetPhones(State& state, vorlink_t const* handle)
    {
        if (state.listener.handle == handle)
        {
            state.listener = {};
        }
        return state.phonesRunning != 0;
    }

    void ListenForPhones(vorlink_t const* handle, vorlink_phone_callback callback, void* context)
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        RequireOpen(state, handle);
        state.listener = {handle, callback, context};
    }

    void OnPhone(wchar_t const* name, std::uint32_t length)
    {
        std::string utf8;
        try
        {
            utf8 = ToUtf8({name, length});
        }
        catch (std::bad_alloc const&)
        {
            return; // an exception here would end the process
        }
        auto& state = TheState();
        std::unique_lock lock(state.mutex);
        auto const listener = state.listener;
        if (!listener.callback)
        {
            return;
        }
        Running const running(state, &State::phonesRunning);
        lock.unlock();
        listener.callback(listener.context, utf8.c_str());
    }
} // namespace wrapper
