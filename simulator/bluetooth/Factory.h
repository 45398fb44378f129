// What the activation factories of this room share: no name, no agility, and statics that begin something.
#pragma once

#include "simulator/com/Object.h"
#include "simulator/objects/Errand.h"

namespace simulator
{
    template <typename... Statics>
    class Factory : public Object<::IActivationFactory, Statics...>
    {
        char const* ClassName() const noexcept final
        {
            return nullptr;
        }

        bool IsAgile() const noexcept final
        {
            return false;
        }
    };

    // A method that hands out an operation; `settle` completes it on a thread of the simulator.
    template <typename Result, typename Settle>
    HRESULT Begin(Method method, std::string const& arguments, platform::IAsyncOperation<Result>** operation,
                  Settle settle)
    {
        return GetObject(method, arguments, operation, [&] { return RunErrand<Result>(arguments, settle); });
    }

    // The same where an argument may be wrong.
    template <typename Result, typename Settle>
    HRESULT BeginIf(bool valid, Method method, std::string const& arguments,
                    platform::IAsyncOperation<Result>** operation, Settle settle)
    {
        if (valid)
        {
            return Begin(method, arguments, operation, settle);
        }
        return Call(method, arguments, [&](std::string&) {
            if (!operation)
            {
                return E_POINTER;
            }
            *operation = nullptr;
            return E_INVALIDARG;
        });
    }

    // A method that hands out a filter, unless an argument is wrong.
    template <typename MakeText>
    HRESULT GetSelector(bool valid, Method method, std::string const& arguments, HSTRING* selector, MakeText make)
    {
        return Call(method, arguments, [&](std::string& result) {
            if (!selector)
            {
                return E_POINTER;
            }
            *selector = nullptr;
            if (!valid)
            {
                return E_INVALIDARG;
            }
            std::string const text = make();
            result = Quoted(text);
            return MakeHstring(text, selector);
        });
    }

    // The sender of an event; null once the program has let go of it.
    template <typename Interface>
    Ref<Interface> SenderOf(Lifetime& lifetime)
    {
        return lifetime.TryAddRef() ? Ref<Interface>::Adopt(static_cast<Interface*>(lifetime.object))
                                    : Ref<Interface>();
    }
} // namespace simulator
