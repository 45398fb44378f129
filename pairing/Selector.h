#pragma once

namespace vorlink
{
    // The query that selects association endpoints: of Bluetooth LE or Classic, all of them or those that
    // can pair or are paired.
    wchar_t const* Selector(bool le, bool allEndpoints) noexcept;
} // namespace vorlink
