#include "host/Text.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace host
{
    namespace
    {
        struct CodePoint
        {
            std::uint32_t value;
            std::size_t size; // 0 when the bytes are not UTF-8
        };

        struct Range
        {
            std::uint32_t first;
            std::uint32_t last;
        };

        bool IsIn(std::uint32_t value, Range const& range)
        {
            return value >= range.first && value <= range.last;
        }

        struct Sequence
        {
            std::size_t size;
            Range firstByte;
            Range value; // a smaller one has a shorter sequence
        };

        constexpr Sequence sequences[] = {
            {1, {0x00, 0x7F}, {0x00, 0x7F}},
            {2, {0xC0, 0xDF}, {0x80, 0x7FF}},
            {3, {0xE0, 0xEF}, {0x800, 0xFFFF}},
            {4, {0xF0, 0xF7}, {0x10000, 0x10FFFF}},
        };

        constexpr Range surrogates = {0xD800, 0xDFFF};

        // Null for a byte that begins none.
        Sequence const* FindSequence(std::uint32_t byte)
        {
            auto const* const found = std::ranges::find_if(
                sequences, [byte](Sequence const& sequence) { return IsIn(byte, sequence.firstByte); });
            return found == std::end(sequences) ? nullptr : found;
        }

        CodePoint DecodeFirst(std::string_view text)
        {
            std::uint32_t const first = static_cast<unsigned char>(text[0]);
            auto const* const sequence = FindSequence(first);
            if (!sequence || sequence->size > text.size())
            {
                return {0, 0};
            }
            auto value = first - sequence->firstByte.first;
            for (char const each : text.substr(1, sequence->size - 1))
            {
                std::uint32_t const byte = static_cast<unsigned char>(each);
                if (!IsIn(byte, {0x80, 0xBF}))
                {
                    return {0, 0};
                }
                value = value << 6 | (byte - 0x80);
            }
            bool const valid = IsIn(value, sequence->value) && !IsIn(value, surrogates);
            return valid ? CodePoint{value, sequence->size} : CodePoint{0, 0};
        }

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
            return std::ranges::any_of(harmful, [value](Range const& range) { return IsIn(value, range); });
        }

        std::string Spelled(std::uint32_t value, bool asByte)
        {
            auto const number = static_cast<unsigned>(value);
            std::array<char, 16> spelled{};
            std::snprintf(spelled.data(), spelled.size(), asByte ? "\\x%02X" : "\\u%04X", number);
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
