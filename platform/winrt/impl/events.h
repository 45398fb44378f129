#pragma once

#include "weak_ref.h"

#include <cstdint>
#include <utility>

namespace winrt
{
    struct event_token
    {
        std::int64_t value = 0;

        explicit operator bool() const noexcept
        {
            return value != 0;
        }
    };

    struct auto_revoke_t
    {
    };
    inline constexpr auto_revoke_t auto_revoke{};

    namespace impl
    {
        // A registration that ends with its owner. The source is held weakly: a registration keeps no
        // watcher alive, and revoking after the watcher's death does nothing.
        template <typename Source, auto Remove>
        struct event_revoker
        {
            event_revoker() noexcept = default;

            event_revoker(Source const& source, event_token token)
                : m_source(source)
                , m_token(token)
            {
            }

            event_revoker(event_revoker&& other) noexcept
                : m_source(std::exchange(other.m_source, nullptr))
                , m_token(other.m_token)
            {
            }

            event_revoker& operator=(event_revoker&& other) noexcept
            {
                if (this != &other)
                {
                    revoke();
                    m_source = std::exchange(other.m_source, nullptr);
                    m_token = other.m_token;
                }
                return *this;
            }

            ~event_revoker()
            {
                revoke();
            }

            void revoke() noexcept
            {
                if (Source const source = m_source.get())
                {
                    (interface_of(source)->*Remove)(EventRegistrationToken{m_token.value});
                }
                m_source = nullptr;
            }

            explicit operator bool() const noexcept
            {
                return static_cast<bool>(m_source);
            }

        private:
            weak_ref<Source> m_source;
            event_token m_token;
        };
    } // namespace impl
} // namespace winrt
