#pragma once

#include "platform/abi/Foundation.h"

namespace winrt
{
    using guid = ::GUID;

    namespace impl
    {
        // abi<T>::type is what a T points to at the binary level. Every projected type specialises it.
        template <typename T>
        struct abi;

        template <typename T>
        using abi_t = typename abi<T>::type;
    } // namespace impl

    template <typename T>
    constexpr guid const& guid_of() noexcept
    {
        return platform::iid_of<impl::abi_t<T>>;
    }
} // namespace winrt
