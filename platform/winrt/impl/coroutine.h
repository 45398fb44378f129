#pragma once

#include "apartment_context.h"
#include "error.h"

#include <atomic>
#include <coroutine>
#include <cstdint>
#include <utility>

namespace winrt
{
    // The result of a coroutine that nobody awaits: an error that leaves it ends the process.
    struct fire_and_forget
    {
    };

    namespace impl
    {
        struct fire_and_forget_promise
        {
            fire_and_forget get_return_object() const noexcept
            {
                return {};
            }
            std::suspend_never initial_suspend() const noexcept
            {
                return {};
            }
            std::suspend_never final_suspend() const noexcept
            {
                return {};
            }
            void return_void() const noexcept {}
            void unhandled_exception() const noexcept
            {
                terminate();
            }
        };

        // Waits for an asynchronous operation. One that is already complete continues at once; another
        // resumes, where Context says, when its completion handler is called.
        template <typename Async, typename Context>
        class await_adapter
        {
        public:
            explicit await_adapter(Async async)
                : m_async(std::move(async))
            {
            }

            bool await_ready() const
            {
                return m_async.Status() == decltype(m_async.Status())::Completed;
            }

            bool await_suspend(std::coroutine_handle<> handle)
            {
                // A completion that comes before the exchange leaves the coroutine to it.
                m_async.Completed(completion(*this, handle));
                return m_suspending.exchange(false, std::memory_order_acquire);
            }

            auto await_resume() const
            {
                check_hresult(m_failure);
                if (m_canceled)
                {
                    throw_hresult(HRESULT_FROM_WIN32(ERROR_CANCELLED));
                }
                return m_async.GetResults();
            }

        private:
            // Resumes once: when called or, should the operation drop it without a call, when destroyed.
            class completion
            {
            public:
                completion(await_adapter& awaiter, std::coroutine_handle<> handle) noexcept
                    : m_awaiter(awaiter)
                    , m_handle(handle)
                {
                }

                completion(completion&& other) noexcept
                    : m_awaiter(other.m_awaiter)
                    , m_context(std::move(other.m_context))
                    , m_handle(std::exchange(other.m_handle, nullptr))
                {
                }

                ~completion()
                {
                    complete();
                }

                template <typename Status>
                void operator()(Async const&, Status status)
                {
                    m_awaiter.m_canceled = status == Status::Canceled;
                    complete();
                }

            private:
                void complete()
                {
                    auto const handle = std::exchange(m_handle, nullptr);
                    // Whoever comes first leaves the continuation to the other: a completion inside
                    // await_suspend makes the coroutine go on there without a suspension.
                    if (handle && !m_awaiter.m_suspending.exchange(false, std::memory_order_release))
                    {
                        resume_in(m_context, handle, m_awaiter.m_failure);
                    }
                }

                await_adapter& m_awaiter;
                Context m_context;
                std::coroutine_handle<> m_handle;
            };

            Async m_async;
            std::int32_t m_failure = 0;
            bool m_canceled = false;
            std::atomic<bool> m_suspending{true};
        };
        struct background_awaiter
        {
            bool await_ready() const noexcept
            {
                return false;
            }
            void await_suspend(std::coroutine_handle<> handle) const
            {
                check_hresult(resume_on_pool(handle));
            }
            void await_resume() const noexcept {}
        };
    } // namespace impl

    // To be awaited: resumes on a thread of the system's pool, and the caller of the coroutine goes on.
    [[nodiscard]] inline impl::background_awaiter resume_background() noexcept
    {
        return {};
    }
} // namespace winrt

template <typename... Args>
struct std::coroutine_traits<winrt::fire_and_forget, Args...>
{
    using promise_type = winrt::impl::fire_and_forget_promise;
};
