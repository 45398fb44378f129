// The values that the simulated platform keeps for an endpoint, by property name.
#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace simulator
{
    // A GUID as lower-case text in braces: "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}".
    struct Guid
    {
        std::string text;
        auto operator<=>(Guid const&) const = default;
    };

    // monostate: the property is known and has no value (the platform hands out null).
    using Value = std::variant<std::monostate, bool, std::int32_t, std::string, Guid>;

    // Of ASCII; any other byte stays.
    constexpr unsigned char ToLower(char character) noexcept
    {
        auto const lower = character >= 'A' && character <= 'Z' ? character - 'A' + 'a' : character;
        return static_cast<unsigned char>(lower);
    }

    // Property names compare without regard to ASCII case, as the platform's queries do.
    struct PropertyNameLess
    {
        using is_transparent = void;
        bool operator()(std::string_view left, std::string_view right) const noexcept;
    };

    using Properties = std::map<std::string, Value, PropertyNameLess>;

    // Those that decide what a pairing does, and what it changes.
    inline constexpr std::string_view isPairedProperty = "System.Devices.Aep.IsPaired";
    inline constexpr std::string_view canPairProperty = "System.Devices.Aep.CanPair";

    bool IsTrue(Properties const& properties, std::string_view name);

    // What type the platform gives a property's values. Unknown: no such property.
    enum class PropertyKind
    {
        Unknown,
        Boolean,
        Int32,
        String,
        Guid,
    };

    PropertyKind KindOfProperty(std::string_view name) noexcept;

    std::vector<std::string_view> const& PropertyNames();
} // namespace simulator
