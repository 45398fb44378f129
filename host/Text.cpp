#include "host/Text.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace host
{
    namespace
    {
        struct CodePoint
        {
            std::uint32_t value;
            std::size_t size; // 0 when the bytes are not UTF-8
        };

        CodePoint DecodeFirst(std::string_view text)
        {
            auto const byte = [text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
            std::size_t const size = byte(0) < 0x80   ? 1
                                     : byte(0) < 0xC0 ? 0
                                     : byte(0) < 0xE0 ? 2
                                     : byte(0) < 0xF0 ? 3
                                                      : 4;
            constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
            if (size == 0 || size > text.size() || byte(0) > 0xF7)
            {
                return {0, 0};
            }
            std::uint32_t value = size == 1 ? byte(0) : byte(0) & (0xFFu >> (size + 1));
            for (std::size_t index = 1; index < size; ++index)
            {
                if ((byte(index) & 0xC0) != 0x80)
                {
                    return {0, 0};
                }
                value = value << 6 | (byte(index) & 0x3Fu);
            }
            bool const surrogate = value >= 0xD800 && value <= 0xDFFF;
            return value < smallest[size] || value > 0x10FFFF || surrogate ? CodePoint{0, 0} : CodePoint{value, size};
        }

        struct Range
        {
            std::uint32_t first;
            std::uint32_t last;
        };

        constexpr Range harmful[] = {
            {0x00, 0x1F},     // controls
            {0x7F, 0x9F},     // delete, and the controls of the upper half
            {0x061C, 0x061C}, // the Arabic letter mark
            {0x200E, 0x200F}, // the marks of the other scripts
            {0x2028, 0x202E}, // separators of lines and paragraphs, embeddings and overrides
            {0x2066, 0x2069}, // isolates
        };

        bool IsHarmful(std::uint32_t value)
        {
            return std::ranges::any_of(
                harmful, [value](Range const& range) { return value >= range.first && value <= range.last; });
        }

        std::string Spelled(std::uint32_t value, bool asByte)
        {
            auto const number = static_cast<unsigned>(value);
            std::array<char, 16> spelled{};
            if (asByte)
            {
                std::snprintf(spelled.data(), spelled.size(), "\\x%02X", number);
            }
            else
            {
                std::snprintf(spelled.data(), spelled.size(), "\\u%04X", number);
            }
            return spelled.data();
        }
    } // namespace

    std::string ToUtf8(std::wstring_view text)
    {
        int const length = static_cast<int>(text.size());
        int const size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
        std::string utf8(static_cast<std::size_t>(size), '\0');
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), size, nullptr, nullptr);
        return utf8;
    }

    std::string Harmless(std::string_view text)
    {
        std::string shown;
        while (!text.empty())
        {
            auto const [value, size] = DecodeFirst(text);
            if (size == 0)
            {
                shown += Spelled(static_cast<unsigned char>(text[0]), true);
            }
            else if (IsHarmful(value))
            {
                shown += Spelled(value, value < 0x80);
            }
            else
            {
                shown += text.substr(0, size);
            }
            text.remove_prefix(size == 0 ? 1 : size);
        }
        return shown;
    }

    std::string Quoted(std::string_view name)
    {
        return '"' + Harmless(name) + '"';
    }
} // namespace host
