#pragma once

#include "com_ptr.h"
#include "implements.h"
#include "unknown.h"

#include "platform/abi/collections.h"

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <shared_mutex>
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

    // The mutex of a vector that has none.
    struct no_mutex
    {
        void lock() noexcept {}
        void unlock() noexcept {}
        void lock_shared() noexcept {}
        void unlock_shared() noexcept {}
    };

    template <typename T, typename Mutex>
    class vector;

    // Walks a vector and fails once it has changed.
    template <typename T, typename Mutex>
    class vector_iterator final : public inspectable_object<platform::IIterator<argument_t<T>>>
    {
    public:
        explicit vector_iterator(com_ptr<vector<T, Mutex>> owner)
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

        com_ptr<vector<T, Mutex>> m_owner;
        std::uint32_t m_version = 0;
        std::uint32_t m_index = 0;
    };

    // Elements are released when the lock is no longer held: their ends may run code that comes back here.
    template <typename T, typename Mutex>
    class vector final
        : public inspectable_object<platform::IVector<argument_t<T>>, platform::IVectorView<argument_t<T>>,
                                    platform::IIterable<argument_t<T>>>
    {
    public:
        explicit vector(std::vector<T>&& values)
            : m_values(std::move(values))
        {
        }

        // Calls body(values, version) with the lock held.
        template <typename Body>
        void read(Body&& body) const
        {
            std::shared_lock const lock(m_mutex);
            body(m_values, m_version);
        }

        HRESULT STDMETHODCALLTYPE First(platform::IIterator<argument_t<T>>** iterator) noexcept override
        {
            return guarded([&] { *iterator = new vector_iterator<T, Mutex>(self()); });
        }

        HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, argument_t<T>* value) noexcept override
        {
            return guarded([&] {
                std::shared_lock const lock(m_mutex);
                check_index(m_values, index);
                *value = hand_out<T>(m_values[index]);
            });
        }

        HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) noexcept override
        {
            std::shared_lock const lock(m_mutex);
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
                std::shared_lock const lock(m_mutex);
                *found = find_in(m_values, value, index);
            });
        }

        HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, argument_t<T> value) noexcept override
        {
            return guarded([&] {
                T replaced = copy_argument<T>(value);
                change([&] {
                    check_index(m_values, index);
                    std::swap(m_values[index], replaced);
                });
            });
        }

        HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, argument_t<T> value) noexcept override
        {
            return guarded([&] {
                change([&] {
                    if (index > m_values.size())
                    {
                        throw_hresult(error_out_of_bounds);
                    }
                    m_values.insert(m_values.begin() + index, copy_argument<T>(value));
                });
            });
        }

        HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) noexcept override
        {
            return guarded([&] {
                T removed = empty_value<T>();
                change([&] {
                    check_index(m_values, index);
                    std::swap(m_values[index], removed);
                    m_values.erase(m_values.begin() + index);
                });
            });
        }

        HRESULT STDMETHODCALLTYPE Append(argument_t<T> value) noexcept override
        {
            return guarded([&] { change([&] { m_values.push_back(copy_argument<T>(value)); }); });
        }

        HRESULT STDMETHODCALLTYPE RemoveAtEnd() noexcept override
        {
            return guarded([&] {
                T removed = empty_value<T>();
                change([&] {
                    check_index(m_values, 0);
                    std::swap(m_values.back(), removed);
                    m_values.pop_back();
                });
            });
        }

        HRESULT STDMETHODCALLTYPE Clear() noexcept override
        {
            std::vector<T> removed;
            return guarded([&] { change([&] { m_values.swap(removed); }); });
        }

        HRESULT STDMETHODCALLTYPE GetMany(UINT32 start, UINT32 capacity, argument_t<T>* values,
                                          UINT32* actual) noexcept override
        {
            return guarded([&] {
                std::shared_lock const lock(m_mutex);
                if (start > m_values.size())
                {
                    throw_hresult(error_out_of_bounds);
                }
                *actual = copy_range(m_values, start, capacity, values);
            });
        }

        HRESULT STDMETHODCALLTYPE ReplaceAll(UINT32 size, argument_t<T>* values) noexcept override
        {
            return guarded([&] {
                std::vector<T> replacement;
                std::transform(values, values + size, std::back_inserter(replacement),
                               [](argument_t<T> value) { return copy_argument<T>(value); });
                change([&] { m_values.swap(replacement); });
            });
        }

    private:
        template <typename Body>
        void change(Body&& body)
        {
            std::unique_lock const lock(m_mutex);
            body();
            ++m_version;
        }

        com_ptr<vector> self() noexcept
        {
            this->AddRef();
            com_ptr<vector> reference;
            reference.attach(this);
            return reference;
        }

        mutable Mutex m_mutex;
        std::vector<T> m_values;
        std::uint32_t m_version = 0;
    };

    template <typename T, typename Mutex>
    Windows::Foundation::Collections::IVector<T> make_vector(std::vector<T>&& values)
    {
        auto* const object = new vector<T, Mutex>(std::move(values));
        return {static_cast<platform::IVector<argument_t<T>>*>(object), take_ownership_from_abi};
    }
} // namespace winrt::impl
