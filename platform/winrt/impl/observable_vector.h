#pragma once

#include "vector.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace winrt::impl
{
    class vector_changed_args final : public inspectable_object<platform::IVectorChangedEventArgs>
    {
    public:
        vector_changed_args(platform::CollectionChange change, UINT32 index) noexcept
            : m_change(change)
            , m_index(index)
        {
        }

        HRESULT STDMETHODCALLTYPE get_CollectionChange(platform::CollectionChange* value) noexcept override
        {
            *value = m_change;
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE get_Index(UINT32* value) noexcept override
        {
            *value = m_index;
            return S_OK;
        }

    private:
        platform::CollectionChange const m_change;
        UINT32 const m_index;
    };

    // Tells its observers of each change, on the thread that made it and with no lock held. What an observer answers
    // is ignored.
    template <typename T>
    class observable_vector final : public vector_base<T, multi_threaded, platform::IObservableVector<argument_t<T>>>
    {
    public:
        using vector_base<T, multi_threaded, platform::IObservableVector<argument_t<T>>>::vector_base;

        HRESULT STDMETHODCALLTYPE add_VectorChanged(platform::VectorChangedEventHandler<argument_t<T>>* handler,
                                                    EventRegistrationToken* token) noexcept override
        {
            return guarded([&] {
                handler->AddRef();
                registration added;
                added.handler.attach(handler);
                slim_lock_guard const lock(m_observersMutex);
                added.token = ++m_latestToken;
                m_observers.push_back(added);
                token->value = added.token;
            });
        }

        HRESULT STDMETHODCALLTYPE remove_VectorChanged(EventRegistrationToken token) noexcept override
        {
            registration removed; // released when the lock is no longer held
            slim_lock_guard const lock(m_observersMutex);
            auto const found = std::find_if(m_observers.begin(), m_observers.end(),
                                            [&](registration const& one) { return one.token == token.value; });
            if (found != m_observers.end())
            {
                std::swap(removed, *found);
                m_observers.erase(found);
            }
            return S_OK;
        }

    protected:
        void changed(platform::CollectionChange change, UINT32 index) noexcept override
        {
            guarded([&] {
                auto const observers = snapshot();
                if (observers.empty())
                {
                    return;
                }
                com_ptr<platform::IVectorChangedEventArgs> args;
                args.attach(new vector_changed_args(change, index));
                for (auto const& observer : observers)
                {
                    observer.handler->Invoke(this, args.get());
                }
            });
        }

    private:
        struct registration
        {
            decltype(EventRegistrationToken::value) token = 0;
            com_ptr<platform::VectorChangedEventHandler<argument_t<T>>> handler;
        };

        std::vector<registration> snapshot()
        {
            slim_shared_lock_guard const lock(m_observersMutex);
            return m_observers;
        }

        slim_mutex m_observersMutex;
        std::vector<registration> m_observers;
        decltype(EventRegistrationToken::value) m_latestToken = 0;
    };
} // namespace winrt::impl
