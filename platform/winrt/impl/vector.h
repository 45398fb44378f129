#pragma once

#include "com_ptr.h"
#include "implements.h"
#include "lock.h"
#include "platform/abi/Collections.h"
#include "unknown.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace winrt::impl
{
    // Runs a method's body; an exception becomes the code that the method returns.
    template <typename Body>
    HRESULT guarded(Body&& body) noexcept
    {
        try
        {
            body();
            return S_OK;
        }
        catch (...)
        {
            return to_hresult();
        }
    }

    template <typename T>
    void check_index(std::vector<T> const& values, std::uint32_t index)
    {
        if (index >= values.size())
        {
            throw_hresult(error_out_of_bounds);
        }
    }

    template <typename T>
    UINT32 copy_range(std::vector<T> const& values, std::size_t start, UINT32 capacity, argument_t<T>* results)
    {
        std::size_t const count =
            start < values.size() ? std::min<std::size_t>(capacity, values.size() - start) : std::size_t{0};
        for (std::size_t i = 0; i < count; ++i)
        {
            results[i] = hand_out<T>(values[start + i]);
        }
        return static_cast<UINT32>(count);
    }

    template <typename T>
    bool find_in(std::vector<T> const& values, argument_t<T> value, UINT32* index)
    {
        auto const wanted = copy_argument<T>(value);
        auto const found = std::find(values.begin(), values.end(), wanted);
        *index = found == values.end() ? 0 : static_cast<UINT32>(found - values.begin());
        return found != values.end();
    }

    // How a vector keeps its callers apart: not at all, or by a lock that readers share.
    struct single_threaded
    {
        struct mutex
        {
        };
        struct shared_guard
        {
            explicit shared_guard(mutex&) noexcept {}
        };
        struct guard
        {
            explicit guard(mutex&) noexcept {}
        };
    };

    struct multi_threaded
    {
        using mutex = slim_mutex;
        using shared_guard = slim_shared_lock_guard;
        using guard = slim_lock_guard;
    };

    // Walks a vector and fails once it has changed.
    template <typename T, typename Owner>
    class vector_iterator final : public inspectable_object<platform::IIterator<argument_t<T>>>
    {
    public:
        explicit vector_iterator(com_ptr<Owner> owner)
            : m_owner(std::move(owner))
        {
            m_owner->read([&](auto const&, std::uint32_t version) { m_version = version; });
        }

        HRESULT STDMETHODCALLTYPE get_Current(argument_t<T>* value) noexcept override
        {
            return walk([&](std::vector<T> const& values) {
                check_index(values, m_index);
                *value = hand_out<T>(values[m_index]);
            });
        }

        HRESULT STDMETHODCALLTYPE get_HasCurrent(boolean* value) noexcept override
        {
            return walk([&](std::vector<T> const& values) { *value = m_index < values.size(); });
        }

        HRESULT STDMETHODCALLTYPE MoveNext(boolean* value) noexcept override
        {
            return walk([&](std::vector<T> const& values) {
                auto const size = static_cast<std::uint32_t>(values.size());
                m_index = std::min(m_index + 1, size);
                *value = m_index < size;
            });
        }

        HRESULT STDMETHODCALLTYPE GetMany(UINT32 capacity, argument_t<T>* items, UINT32* actual) noexcept override
        {
            return walk([&](std::vector<T> const& values) {
                *actual = copy_range(values, m_index, capacity, items);
                m_index += *actual;
            });
        }

    private:
        template <typename Body>
        HRESULT walk(Body&& body) noexcept
        {
            return guarded([&] {
                m_owner->read([&](auto const& values, std::uint32_t version) {
                    if (version != m_version)
                    {
                        throw_hresult(error_changed_state);
                    }
                    body(values);
                });
            });
        }

        com_ptr<Owner> m_owner;
        std::uint32_t m_version = 0;
        std::uint32_t m_index = 0;
    };

    // Elements are released when the lock is no longer held: their ends may run code that comes back here. So does
    // whoever is told of a change.
    template <typename T, typename Threading, typename... More>
    class vector_base
        : public inspectable_object<platform::IVector<argument_t<T>>, platform::IVectorView<argument_t<T>>,
                                    platform::IIterable<argument_t<T>>, More...>
    {
    public:
        explicit vector_base(std::vector<T>&& values)
            : m_values(std::move(values))
        {
        }

        // Calls body(values, version) with the lock held.
        template <typename Body>
        void read(Body&& body) const
        {
            shared_guard const lock(m_mutex);
            body(m_values, m_version);
        }

        HRESULT STDMETHODCALLTYPE First(platform::IIterator<argument_t<T>>** iterator) noexcept override
        {
            return guarded([&] { *iterator = new vector_iterator<T, vector_base>(self()); });
        }

        HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, argument_t<T>* value) noexcept override
        {
            return guarded([&] {
                shared_guard const lock(m_mutex);
                check_index(m_values, index);
                *value = hand_out<T>(m_values[index]);
            });
        }

        HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) noexcept override
        {
            shared_guard const lock(m_mutex);
            *size = static_cast<UINT32>(m_values.size());
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE GetView(platform::IVectorView<argument_t<T>>** view) noexcept override
        {
            *view = self().detach(); // sees what becomes of the vector
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE IndexOf(argument_t<T> value, UINT32* index, boolean* found) noexcept override
        {
            return guarded([&] {
                shared_guard const lock(m_mutex);
                *found = find_in(m_values, value, index);
            });
        }

        HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, argument_t<T> value) noexcept override
        {
            return guarded([&] {
                T replaced = copy_argument<T>(value);
                change(CollectionChange::ItemChanged, [&] {
                    check_index(m_values, index);
                    std::swap(m_values[index], replaced);
                    return index;
                });
            });
        }

        HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, argument_t<T> value) noexcept override
        {
            return guarded([&] {
                change(CollectionChange::ItemInserted, [&] {
                    if (index > m_values.size())
                    {
                        throw_hresult(error_out_of_bounds);
                    }
                    m_values.insert(m_values.begin() + index, copy_argument<T>(value));
                    return index;
                });
            });
        }

        HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) noexcept override
        {
            return guarded([&] {
                auto removed = empty_value<T>();
                change(CollectionChange::ItemRemoved, [&] {
                    check_index(m_values, index);
                    std::swap(m_values[index], removed);
                    m_values.erase(m_values.begin() + index);
                    return index;
                });
            });
        }

        HRESULT STDMETHODCALLTYPE Append(argument_t<T> value) noexcept override
        {
            return guarded([&] {
                change(CollectionChange::ItemInserted, [&] {
                    m_values.push_back(copy_argument<T>(value));
                    return static_cast<UINT32>(m_values.size()) - 1;
                });
            });
        }

        HRESULT STDMETHODCALLTYPE RemoveAtEnd() noexcept override
        {
            return guarded([&] {
                auto removed = empty_value<T>();
                change(CollectionChange::ItemRemoved, [&] {
                    check_index(m_values, 0);
                    std::swap(m_values.back(), removed);
                    m_values.pop_back();
                    return static_cast<UINT32>(m_values.size());
                });
            });
        }

        HRESULT STDMETHODCALLTYPE Clear() noexcept override
        {
            return replace({});
        }

        HRESULT STDMETHODCALLTYPE GetMany(UINT32 start, UINT32 capacity, argument_t<T>* values,
                                          UINT32* actual) noexcept override
        {
            return guarded([&] {
                shared_guard const lock(m_mutex);
                if (start > m_values.size())
                {
                    throw_hresult(error_out_of_bounds);
                }
                *actual = copy_range(m_values, start, capacity, values);
            });
        }

        HRESULT STDMETHODCALLTYPE ReplaceAll(UINT32 size, argument_t<T>* values) noexcept override
        {
            std::vector<T> replacement;
            HRESULT const result = guarded([&] {
                std::transform(values, values + size, std::back_inserter(replacement),
                               [](argument_t<T> value) { return copy_argument<T>(value); });
            });
            return result < 0 ? result : replace(std::move(replacement));
        }

    protected:
        using CollectionChange = platform::CollectionChange;

        // Called after each change, by the thread that made it.
        virtual void changed(CollectionChange, UINT32) noexcept {}

    private:
        using shared_guard = typename Threading::shared_guard;
        using guard = typename Threading::guard;

        // `body` makes the change and gives the index that it is about.
        template <typename Body>
        void change(CollectionChange what, Body&& body)
        {
            UINT32 index = 0;
            {
                guard const lock(m_mutex);
                index = body();
                ++m_version;
            }
            changed(what, index);
        }

        HRESULT replace(std::vector<T> values) noexcept
        {
            return guarded([&] {
                change(CollectionChange::Reset, [&] {
                    m_values.swap(values);
                    return UINT32{0};
                });
            });
        }

        com_ptr<vector_base> self() noexcept
        {
            this->AddRef();
            com_ptr<vector_base> reference;
            reference.attach(this);
            return reference;
        }

        mutable typename Threading::mutex m_mutex;
        std::vector<T> m_values;
        std::uint32_t m_version = 0;
    };

    template <typename T>
    class vector final : public vector_base<T, single_threaded>
    {
        using vector_base<T, single_threaded>::vector_base;
    };
} // namespace winrt::impl
