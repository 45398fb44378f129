#pragma once

#include "implements.h"
#include "unknown.h"

#include <utility>

namespace winrt::impl
{
    // A handler as the platform sees it: agile, and no exception of the function crosses the boundary.
    // Args are the projected types of the function's parameters.
    template <typename Interface, typename Function, typename... Args>
    class delegate final : public agile_object<Interface>
    {
    public:
        explicit delegate(Function&& function)
            : m_function(std::move(function))
        {
        }

        HRESULT STDMETHODCALLTYPE Invoke(argument_t<Args>... args) noexcept override
        {
            try
            {
                m_function(copy_argument<Args>(args)...);
                return S_OK;
            }
            catch (...)
            {
                return to_hresult();
            }
        }

    private:
        Function m_function;
    };

    // The reference that a new delegate is created with.
    template <typename Interface, typename... Args, typename Function>
    void* make_delegate(Function function)
    {
        return static_cast<Interface*>(new delegate<Interface, Function, Args...>(std::move(function)));
    }
} // namespace winrt::impl
