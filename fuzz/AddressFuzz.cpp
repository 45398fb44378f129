// Any bytes as an endpoint's identifier and, behind a line feed, a device's name: the address, and the report with
// both in it.
#include "fuzz/Require.h"
#include "pairing/EndpointAddress.h"
#include "pairing/Report.h"
#include "pairing/SplitText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace
{
    using fuzz::Require;

    // Joined again, the pieces are the text; a delimiter at its very end has no piece behind it.
    void CheckPieces(std::string const& text, std::string const& delimiter)
    {
        auto const pieces = vorlink::SplitText(text, delimiter);
        Require(!pieces.empty());
        std::string joined;
        for (auto const& piece : pieces)
        {
            Require(piece.find(delimiter) == piece.npos);
            joined += piece + delimiter;
        }
        bool const endsInDelimiter = text.ends_with(delimiter);
        Require(joined == (endsInDelimiter ? text : text + delimiter));
    }

    std::string AddressText(std::string_view identifier)
    {
        auto const dash = identifier.find('-');
        if (dash == identifier.npos)
        {
            return {};
        }
        identifier.remove_prefix(dash + 1);
        std::string text(identifier.substr(0, identifier.find('-')));
        std::erase(text, ':');
        return text;
    }

    // Of digits alone: what stands before or between them is the C library's to read.
    std::uint64_t NumberOf(std::string_view digits)
    {
        constexpr std::string_view values = "0123456789abcdef";
        std::uint64_t number = 0;
        for (auto const digit : digits)
        {
            auto const lower = digit >= 'A' && digit <= 'F' ? static_cast<char>(digit - 'A' + 'a') : digit;
            if (number >> 60 != 0)
            {
                return std::numeric_limits<std::uint64_t>::max();
            }
            number = number << 4 | values.find(lower);
        }
        return number;
    }

    void CheckReport(vorlink::EndpointAddress const& address, std::string_view name)
    {
        std::string texts(sizeof(PairReport::name) + sizeof(PairReport::addressText), '\0');
        name.copy(texts.data(), texts.size());
        address.text.copy(texts.data() + sizeof(PairReport::name), sizeof(PairReport::addressText));

        auto const report = vorlink::MakeReport(address.number, !name.empty(), name, address.text);
        auto const* const bytes = reinterpret_cast<char const*>(&report);
        Require(std::string(bytes + offsetof(PairReport, name), texts.size()) == texts);
        Require(report.address == address.number && report.paired == (name.empty() ? 0 : 1));
    }
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const*>(data), size);
    std::string const identifier = text.substr(0, text.find('\n'));
    auto const name = std::string_view(text).substr(std::min(size, identifier.size() + 1));

    CheckPieces(identifier, "-");
    CheckPieces(identifier, ":");
    auto const address = vorlink::AddressOf(identifier);
    Require(address.text == AddressText(identifier));
    if (address.text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos)
    {
        Require(address.number == NumberOf(address.text));
    }
    CheckReport(address, name);
    return 0;
}
