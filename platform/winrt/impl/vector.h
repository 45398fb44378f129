#pragma once

#include "com_ptr.h"
#include "implements.h"
#include "unknown.h"

#include "platform/abi/collections.h"

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

    template <typename T>
    class vector;

    // Walks a vector and fails once it has changed.
    template <typename T>
    class vector_iterator final : public inspectable_object<platform::IIterator<argument_t<T>>>
    {
    public:
        explicit vector_iterator(com_ptr<vector<T>> owner)
            : m_owner(std::move(owner))
            , m_version(m_owner->version())
        {
        }

        HRESULT STDMETHODCALLTYPE get_Current(argument_t<T>* value) noexcept override
        {
            return guarded([&] {
                check_unchanged();
                check_index(m_owner->values(), m_index);
                *value = hand_out<T>(m_owner->values()[m_index]);
            });
        }

        HRESULT STDMETHODCALLTYPE get_HasCurrent(boolean* value) noexcept override
        {
            return guarded([&] {
                check_unchanged();
                *value = m_index < m_owner->values().size();
            });
        }

        HRESULT STDMETHODCALLTYPE MoveNext(boolean* value) noexcept override
        {
            return guarded([&] {
                check_unchanged();
                auto const size = static_cast<std::uint32_t>(m_owner->values().size());
                m_index = std::min(m_index + 1, size);
                *value = m_index < size;
            });
        }

        HRESULT STDMETHODCALLTYPE GetMany(UINT32 capacity, argument_t<T>* values, UINT32* actual) noexcept override
        {
            return guarded([&] {
                check_unchanged();
                *actual = copy_range(m_owner->values(), m_index, capacity, values);
                m_index += *actual;
            });
        }

    private:
        void check_unchanged() const
        {
            if (m_version != m_owner->version())
            {
                throw_hresult(error_changed_state);
            }
        }

        com_ptr<vector<T>> m_owner;
        std::uint32_t m_version;
        std::uint32_t m_index = 0;
    };

    template <typename T>
    class vector final
        : public inspectable_object<platform::IVector<argument_t<T>>, platform::IVectorView<argument_t<T>>,
                                    platform::IIterable<argument_t<T>>>
    {
    public:
        explicit vector(std::vector<T>&& values)
            : m_values(std::move(values))
        {
        }

        std::vector<T> const& values() const noexcept
        {
            return m_values;
        }

        std::uint32_t version() const noexcept
        {
            return m_version;
        }

        HRESULT STDMETHODCALLTYPE First(platform::IIterator<argument_t<T>>** iterator) noexcept override
        {
            return guarded([&] { *iterator = new vector_iterator<T>(self()); });
        }

        HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, argument_t<T>* value) noexcept override
        {
            return guarded([&] {
                check_index(m_values, index);
                *value = hand_out<T>(m_values[index]);
            });
        }

        HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) noexcept override
        {
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
            return guarded([&] { *found = find_in(m_values, value, index); });
        }

        HRESULT STDMETHODCALLTYPE SetAt(UINT32 index, argument_t<T> value) noexcept override
        {
            return change([&] {
                check_index(m_values, index);
                m_values[index] = copy_argument<T>(value);
            });
        }

        HRESULT STDMETHODCALLTYPE InsertAt(UINT32 index, argument_t<T> value) noexcept override
        {
            return change([&] {
                if (index > m_values.size())
                {
                    throw_hresult(error_out_of_bounds);
                }
                m_values.insert(m_values.begin() + index, copy_argument<T>(value));
            });
        }

        HRESULT STDMETHODCALLTYPE RemoveAt(UINT32 index) noexcept override
        {
            return change([&] {
                check_index(m_values, index);
                m_values.erase(m_values.begin() + index);
            });
        }

        HRESULT STDMETHODCALLTYPE Append(argument_t<T> value) noexcept override
        {
            return change([&] { m_values.push_back(copy_argument<T>(value)); });
        }

        HRESULT STDMETHODCALLTYPE RemoveAtEnd() noexcept override
        {
            return change([&] {
                check_index(m_values, 0);
                m_values.pop_back();
            });
        }

        HRESULT STDMETHODCALLTYPE Clear() noexcept override
        {
            return change([&] { m_values.clear(); });
        }

        HRESULT STDMETHODCALLTYPE GetMany(UINT32 start, UINT32 capacity, argument_t<T>* values,
                                          UINT32* actual) noexcept override
        {
            return guarded([&] {
                if (start > m_values.size())
                {
                    throw_hresult(error_out_of_bounds);
                }
                *actual = copy_range(m_values, start, capacity, values);
            });
        }

        HRESULT STDMETHODCALLTYPE ReplaceAll(UINT32 size, argument_t<T>* values) noexcept override
        {
            return change([&] {
                std::vector<T> replacement;
                std::transform(values, values + size, std::back_inserter(replacement),
                               [](argument_t<T> value) { return copy_argument<T>(value); });
                m_values = std::move(replacement);
            });
        }

    private:
        template <typename Body>
        HRESULT change(Body&& body) noexcept
        {
            HRESULT const result = guarded(body);
            if (result >= 0)
            {
                ++m_version;
            }
            return result;
        }

        com_ptr<vector> self() noexcept
        {
            this->AddRef();
            com_ptr<vector> reference;
            reference.attach(this);
            return reference;
        }

        std::vector<T> m_values;
        std::uint32_t m_version = 0;
    };
} // namespace winrt::impl
