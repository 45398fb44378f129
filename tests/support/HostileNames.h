// Names that nobody gives a device in good faith: one table for every way in which a name enters.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace test
{
    struct HostileName
    {
        char const* label;
        std::string_view bytes;          // as a host gives it: UTF-8, where the air has it too
        std::size_t size = bytes.size(); // the bytes repeat up to it
        bool isOnAir = true;             // false: no device can have it
        std::wstring_view units = {};    // what the air has, where no UTF-8 tells it
    };

    // 13 bytes, so that text that is out of its place shows.
    inline constexpr std::string_view digits = "0123456789abc";

    using namespace std::string_view_literals;

    inline constexpr HostileName hostileNames[] = {
        {"Empty", ""},
        {"Of1Byte", "n"},
        {"Of13Bytes", digits, 13},
        {"Of14Bytes", digits, 14},
        {"Of127Bytes", digits, 127},
        {"Of128Bytes", digits, 128},
        {"Of383Bytes", digits, 383},
        {"Of384Bytes", digits, 384},
        {"Of385Bytes", digits, 385},
        {"Of10239Bytes", digits, 10'239},
        {"Of10240Bytes", digits, 10'240},
        {"Of100000Bytes", digits, 100'000},
        {"Of5000000Bytes", digits, 5'000'000},
        {"Conversions", "%s%n%99999d%%"},
        {"ConversionsThatTakeArguments", "%*d%.*s%ls%hhn%p"},
        {"PercentSigns", "%", 1'001},
        {"RecordBehindALineFeed", "x\n2024-03-07 09:05:02 047[File:SubVorlink][Line:796][Function:SubVorlink::"
                                  "PairingDevice] DevicePairingResultStatus::Paired"},
        {"EntryBehindALineFeed", "Ana=a4c138\nBen=5e220f"},
        {"CarriageReturn", "Ana\r"},
        {"EqualsSign", "Ana=Ben"},
        {"EqualsSignInFront", "=Ana"},
        {"Ampersands", "a&b&c&d&e"},
        {"Dashes", "-a-b-"},
        {"ListingsLine", "BTHLE\\Dev_a&b&c&d ?? LE ??"},
        {"LeIdentifier", "BluetoothLE#BluetoothLE00:1a:7d:da:71:13-c1:d2:e3:f4:a5:b6"},
        {"PathUpwards", "..\\..\\MyLEData"},
        {"ZeroByte", "Ana\0Ben"sv},
        {"OutsideTheCodePages", "\xe7\x94\xb5\xe8\xaf\x9d \xf0\x9f\x94\x8a"},
        {"CharactersThatACutDivides", "\xe7\x94\xb5", 12'000},
        {"RightToLeftOverride", "Ana\xe2\x80\xaegpj.exe"},
        {"ZeroWidth", "A\xe2\x80\x8bn\xe2\x80\x8d"
                      "a\xef\xbb\xbf"},
        {"NoUtf8", "\xff\xfe\xc0\xaf\x80", 5, false},
        {"Utf8CutShort", "Zo\xc3", 3, false},
        {"LoneSurrogates", "a\xed\xa0\x80z\xed\xb0\x80", 8, true, L"a\xd800z\xdc00"},
    };

    inline std::string TextOf(HostileName const& name)
    {
        std::string text;
        while (text.size() < name.size)
        {
            text += name.bytes.substr(0, name.size - text.size());
        }
        return text;
    }

    inline std::vector<HostileName> HostileNamesOnAir()
    {
        std::vector<HostileName> names;
        for (auto const& name : hostileNames)
        {
            if (name.isOnAir)
            {
                names.push_back(name);
            }
        }
        return names;
    }

    inline void PrintTo(HostileName const& name, std::ostream* stream)
    {
        *stream << name.label;
    }

    inline constexpr auto labelOfName = [](auto const& test) { return std::string(test.param.label); };
} // namespace test
