#pragma once

#include <mutex>
#include <utility>

namespace vorlink
{
    // A value that any thread may read and replace: whole each time, the latest wins.
    template <typename Value>
    class Guarded
    {
    public:
        Value Read() const
        {
            std::lock_guard const lock(m_mutex);
            return m_value;
        }

        void Write(Value value)
        {
            std::lock_guard const lock(m_mutex);
            std::swap(m_value, value);
        }

    private:
        mutable std::mutex m_mutex;
        Value m_value{};
    };
} // namespace vorlink
