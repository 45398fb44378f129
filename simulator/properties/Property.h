// The values that the simulated platform keeps for an endpoint, by property name.
#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <ratio>
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

    // In units of 100 ns since the beginning of 1601, UTC.
    struct DateTime
    {
        std::int64_t ticks;
        auto operator<=>(DateTime const&) const = default;
    };

    using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

    DateTime DateTimeOf(std::chrono::sys_time<Ticks> time);
    DateTime Now();

    using Texts = std::vector<std::string>;
    using Guids = std::vector<Guid>;
    using Bytes = std::vector<std::uint8_t>;

    // monostate: the property is known and has no value (the platform hands out null).
    using Value = std::variant<std::monostate, bool, std::uint8_t, std::uint16_t, std::int32_t, std::uint32_t,
                               std::string, Guid, DateTime, Texts, Guids, Bytes>;

    // A number of whatever width; nothing of what is none.
    std::optional<std::int64_t> AsInteger(Value const& value);

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

    bool SamePropertyName(std::string_view left, std::string_view right) noexcept;

    // What it does not hold is null: of the many properties, an endpoint has values for few.
    using Properties = std::map<std::string, Value, PropertyNameLess>;

    // Never changed, replaced whole.
    using SharedProperties = std::shared_ptr<Properties const>;
    using SharedNames = std::shared_ptr<std::vector<std::string> const>;

    // Those that decide what a pairing does, and what it changes.
    inline constexpr std::string_view isPairedProperty = "System.Devices.Aep.IsPaired";
    inline constexpr std::string_view isConnectedProperty = "System.Devices.Aep.IsConnected";
    inline constexpr std::string_view isPresentProperty = "System.Devices.Aep.IsPresent";
    inline constexpr std::string_view canPairProperty = "System.Devices.Aep.CanPair";

    inline constexpr std::string_view lastSeenProperty = "System.Devices.Aep.Bluetooth.LastSeenTime";

    bool IsTrue(Properties const& properties, std::string_view name);

    // What type the platform gives a property's values, in the order of Value's alternatives. Unknown: no such
    // property.
    enum class PropertyKind
    {
        Unknown,
        Boolean,
        UInt8,
        UInt16,
        Int32,
        UInt32,
        String,
        Guid,
        DateTime,
        StringArray,
        GuidArray,
        ByteArray,
    };

    PropertyKind KindOfProperty(std::string_view name) noexcept;

    // In its own letter case: where a program asks for a property, the platform knows no other.
    bool IsPropertyName(std::string_view name) noexcept;

    std::vector<std::string_view> const& PropertyNames();
} // namespace simulator
