// Any bytes as the data store's file: what is taken of them holds together.
#include "fuzz/Require.h"
#include "pairing/LeData.h"

#include <cstdint>
#include <sstream>
#include <string>

namespace
{
    using fuzz::Require;

    vorlink::LeData Read(std::string const& text)
    {
        vorlink::LeData store;
        std::istringstream stream(text);
        std::string echo;
        vorlink::ReadLeData(stream, store, echo);
        Require(store.empty() == echo.empty());
        return store;
    }
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const*>(data), size);
    auto const store = Read(text);
    for (auto const& [key, value] : store)
    {
        Require(!key.empty() && key.find_first_of("=\n") == std::string::npos);
        Require(!value.empty() && value.find_first_of("=\n") == std::string::npos);
        Require(vorlink::HasValue(store, value) && vorlink::ValueOf(store, key) == value);
    }
    std::string written;
    std::string echo;
    vorlink::WriteLeData(store, written, echo);
    // A carriage return at a value's end becomes a part of the line's end.
    if (text.find('\r') == std::string::npos)
    {
        Require(Read(written) == store);
    }
    return 0;
}
