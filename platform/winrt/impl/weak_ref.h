#pragma once

#include "com_ptr.h"
#include "unknown.h"

#include <cstddef>

namespace winrt
{
    // A reference that does not keep its object alive.
    template <typename T>
    struct weak_ref
    {
        weak_ref(std::nullptr_t = nullptr) noexcept {}

        weak_ref(T const& object)
        {
            if (object)
            {
                com_ptr<platform::IWeakReferenceSource> source;
                check_hresult(impl::interface_of<Windows::Foundation::IUnknown>(object)->QueryInterface(
                    platform::IWeakReferenceSource::iid, source.put_void()));
                check_hresult(source->GetWeakReference(m_reference.put()));
            }
        }

        // The object, or null when it is gone.
        T get() const noexcept
        {
            T object{nullptr};
            if (m_reference)
            {
                m_reference->Resolve(guid_of<T>(), put_abi(object));
            }
            return object;
        }

        explicit operator bool() const noexcept
        {
            return static_cast<bool>(m_reference);
        }

    private:
        com_ptr<platform::IWeakReference> m_reference;
    };
} // namespace winrt
