#pragma once

#include "com_ptr.h"

#include <threadpoolapiset.h>

#include <coroutine>
#include <cstdint>

namespace winrt::impl
{
    inline com_ptr<platform::IContextCallback> current_context() noexcept
    {
        com_ptr<platform::IContextCallback> context;
        CoGetObjectContext(platform::IContextCallback::iid, context.put_void());
        return context;
    }

    inline APTTYPE current_apartment() noexcept
    {
        APTTYPE type{};
        APTTYPEQUALIFIER qualifier{};
        // A thread without COM counts as one of the multithreaded apartment.
        return CoGetApartmentType(&type, &qualifier) < 0 ? APTTYPE_MTA : type;
    }

    // Where a coroutine was when it began to wait.
    struct apartment_context
    {
        com_ptr<platform::IContextCallback> context = current_context();
        APTTYPE type = current_apartment();
    };

    // For a coroutine that does not mind where it goes on.
    struct any_context
    {
    };

    inline HRESULT resume_on_pool(std::coroutine_handle<> handle) noexcept
    {
        auto const callback = [](PTP_CALLBACK_INSTANCE, void* address) {
            std::coroutine_handle<>::from_address(address).resume();
        };
        return TrySubmitThreadpoolCallback(callback, handle.address(), nullptr) ? S_OK
                                                                                : HRESULT_FROM_WIN32(GetLastError());
    }

    inline HRESULT resume_in_context(platform::IContextCallback& context, std::coroutine_handle<> handle) noexcept
    {
        // The call does not let other calls into the apartment meanwhile.
        constexpr GUID noReentrancy{0x0A299774, 0x3E4E, 0xFC42, {0x1D, 0x9D, 0x72, 0xCE, 0xE1, 0x05, 0xCA, 0x57}};
        constexpr int anyMethod = 5;
        auto const callback = [](platform::IContextCallback::CallData* call) -> HRESULT {
            std::coroutine_handle<>::from_address(call->data).resume();
            return S_OK;
        };
        platform::IContextCallback::CallData data{0, 0, handle.address()};
        return context.ContextCallback(callback, &data, noReentrancy, anyMethod, nullptr);
    }

    // Resumes the coroutine where it began to wait. When the system cannot bring it there, it is resumed
    // here and told so by `failure`: an error is better than a continuation that never comes.
    inline void resume_in(apartment_context const& target, std::coroutine_handle<> handle, std::int32_t& failure)
    {
        if (!target.context || target.context == current_context())
        {
            handle.resume();
            return;
        }
        HRESULT const result =
            target.type == APTTYPE_MTA ? resume_on_pool(handle) : resume_in_context(*target.context.get(), handle);
        if (result < 0)
        {
            failure = result;
            handle.resume();
        }
    }

    inline void resume_in(any_context, std::coroutine_handle<> handle, std::int32_t&)
    {
        handle.resume();
    }
} // namespace winrt::impl
