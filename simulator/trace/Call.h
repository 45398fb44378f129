// The one way into every method of the platform: traced, and failing on demand.
#pragma once

#include "simulator/com/Hstring.h"
#include "simulator/trace/Method.h"
#include "simulator/trace/Texts.h"
#include "simulator/trace/Trace.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <string>

namespace simulator
{
    // Failures set for a method queue up; each lets some calls pass and fails the next one.
    void QueueFailure(std::string_view method, std::uint32_t passes, HRESULT code);
    void ForgetFailures();
    std::optional<HRESULT> TakeFailure(std::string_view method);

    // `body` does the work: HRESULT(std::string& result), the result being its text in the trace.
    template <typename Body>
    HRESULT Call(Method method, std::string const& arguments, Body body)
    {
        try
        {
            auto const line = TraceCall(method.Name(), arguments);
            std::string result;
            auto const failure = TakeFailure(method.Name());
            HRESULT const code = failure ? *failure : body(result);
            TraceResult(*line, code, result);
            return code;
        }
        catch (std::exception const&) // memory or threads have run out
        {
            return E_OUTOFMEMORY;
        }
    }

    // A method that hands out one plain value.
    template <typename T, typename Read>
    HRESULT Get(Method method, std::string const& instance, T* value, Read read)
    {
        return Call(method, instance, [&](std::string& result) {
            if (!value)
            {
                return E_POINTER;
            }
            *value = read();
            result = Text(*value);
            return S_OK;
        });
    }

    template <typename Read>
    HRESULT GetString(Method method, std::string const& instance, HSTRING* value, Read read)
    {
        return Call(method, instance, [&](std::string& result) {
            if (!value)
            {
                return E_POINTER;
            }
            std::string const text = read();
            result = Quoted(text);
            return MakeHstring(text, value);
        });
    }

    // A method that hands out an object: `make` gives a Ref to it, or to what derives from it.
    template <typename Interface, typename MakeObject>
    HRESULT GetObject(Method method, std::string const& arguments, Interface** object, MakeObject make)
    {
        return Call(method, arguments, [&](std::string&) {
            if (!object)
            {
                return E_POINTER;
            }
            *object = nullptr;
            *object = make().Detach();
            return S_OK;
        });
    }

    // A method of the platform that this simulator leaves out.
    inline HRESULT Outside(LeftOutMethod method, std::string const& arguments)
    {
        return Call(method, arguments, [](std::string&) { return E_NOTIMPL; });
    }

    template <typename Out>
    HRESULT Outside(LeftOutMethod method, std::string const& arguments, Out* out)
    {
        return Call(method, arguments, [&](std::string&) {
            if (!out)
            {
                return E_POINTER;
            }
            *out = nullptr;
            return E_NOTIMPL;
        });
    }
} // namespace simulator
