#include "host/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <optional>
#include <system_error>

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
            {0x200B, 0x200B}, // a blank without width
            {0x200E, 0x200F}, // the marks of the other scripts
            {0x2028, 0x202E}, // separators of lines and paragraphs, embeddings and overrides
            {0x2060, 0x2060}, // a joiner of words, without width
            {0x2066, 0x2069}, // isolates
            {0xFEFF, 0xFEFF}, // the mark of a byte order, without width
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

        bool IsSpelled(CodePoint const& point)
        {
            return point.size == 0 || IsHarmful(point.value);
        }

        std::optional<std::uint32_t> ReadHexadecimal(std::string_view text, std::size_t digits)
        {
            std::uint32_t value = 0;
            if (text.size() < digits)
            {
                return std::nullopt;
            }
            auto const [end, error] = std::from_chars(text.data(), text.data() + digits, value, 16);
            return error == std::errc() && end == text.data() + digits ? std::optional(value) : std::nullopt;
        }

        std::string EncodeUtf8(std::uint32_t value)
        {
            // A spelling has four digits at most.
            if (value < 0x80)
            {
                return {static_cast<char>(value)};
            }
            if (value < 0x800)
            {
                return {static_cast<char>(0xC0 | value >> 6), static_cast<char>(0x80 | (value & 0x3F))};
            }
            return {static_cast<char>(0xE0 | value >> 12), static_cast<char>(0x80 | (value >> 6 & 0x3F)),
                    static_cast<char>(0x80 | (value & 0x3F))};
        }

        struct Spelling
        {
            std::string text;
            std::size_t size; // of what spells it
        };

        // Of a text that begins with a backslash. One that begins no spelling stands for itself.
        Spelling ReadSpelling(std::string_view text)
        {
            char const kind = text.size() > 1 ? text[1] : '\0';
            auto const rest = text.substr(std::min<std::size_t>(text.size(), 2));
            if (kind == '\\')
            {
                return {"\\", 2};
            }
            if (kind == 'x')
            {
                if (auto const byte = ReadHexadecimal(rest, 2))
                {
                    return {{static_cast<char>(*byte)}, 4};
                }
            }
            if (kind == 'u')
            {
                if (auto const value = ReadHexadecimal(rest, 4))
                {
                    return {EncodeUtf8(*value), 6};
                }
            }
            return {"\\", 1};
        }

        // Whether a backslash before this text would read as the beginning of a spelling.
        bool ContinuesSpelling(std::string_view text)
        {
            return !text.empty() && (text[0] == '\\' || IsSpelled(DecodeFirst(text)) ||
                                     ReadSpelling('\\' + std::string(text.substr(0, 5))).size > 1);
        }

        // Those that a terminal draws over the one before, or not at all.
        constexpr Range withoutColumn[] = {
            {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A}, {0x064B, 0x065F},
            {0x0E31, 0x0E31}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},
            {0x200B, 0x200D}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF},
        };

        // East Asian characters and most emoji.
        constexpr Range twoColumns[] = {
            {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},
            {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF},
            {0x1F900, 0x1F9FF}, {0x1FA70, 0x1FAFF}, {0x20000, 0x3FFFD},
        };

        std::size_t ColumnsOf(std::uint32_t value)
        {
            auto const holds = [value](Range const& range) { return IsIn(value, range); };
            return std::ranges::any_of(withoutColumn, holds) ? 0 : std::ranges::any_of(twoColumns, holds) ? 2 : 1;
        }

        // The bytes of the text's beginning that fit.
        std::size_t FittingSize(std::string_view text, std::size_t columns)
        {
            std::size_t fitting = 0;
            while (fitting < text.size())
            {
                auto const [value, size] = DecodeFirst(text.substr(fitting));
                auto const taken = ColumnsOf(value);
                if (taken > columns)
                {
                    break;
                }
                columns -= taken;
                fitting += std::max<std::size_t>(size, 1);
            }
            return fitting;
        }
    } // namespace

    std::string Harmless(std::string_view text)
    {
        std::string shown;
        while (!text.empty())
        {
            auto const point = DecodeFirst(text);
            auto const size = std::max<std::size_t>(point.size, 1);
            auto const rest = text.substr(size);
            if (point.size == 0)
            {
                shown += Spelled(static_cast<unsigned char>(text[0]), true);
            }
            else if (IsHarmful(point.value))
            {
                shown += Spelled(point.value, point.value < 0x80);
            }
            else
            {
                shown += text.substr(0, size);
                shown += text[0] == '\\' && ContinuesSpelling(rest) ? "\\" : "";
            }
            text = rest;
        }
        return shown;
    }

    std::string FromHarmless(std::string_view shown)
    {
        std::string text;
        while (!shown.empty())
        {
            auto const spelling = shown[0] == '\\' ? ReadSpelling(shown) : Spelling{{shown[0]}, 1};
            text += spelling.text;
            shown.remove_prefix(spelling.size);
        }
        return text;
    }

    std::string Quoted(std::string_view name)
    {
        return '"' + Harmless(name) + '"';
    }

    std::size_t Columns(std::string_view text)
    {
        std::size_t columns = 0;
        while (!text.empty())
        {
            auto const [value, size] = DecodeFirst(text);
            columns += ColumnsOf(value);
            text.remove_prefix(std::max<std::size_t>(size, 1));
        }
        return columns;
    }

    std::string FitColumns(std::string_view text, std::size_t columns)
    {
        if (FittingSize(text, columns) == text.size())
        {
            return std::string(text);
        }
        return columns == 0 ? "" : std::string(text.substr(0, FittingSize(text, columns - 1))) + "…";
    }

    std::string PadColumns(std::string_view text, std::size_t columns)
    {
        auto fitted = FitColumns(text, columns);
        fitted.append(columns - Columns(fitted), ' ');
        return fitted;
    }

    std::string WrapColumns(std::string_view text, std::size_t columns)
    {
        std::string wrapped;
        std::size_t used = 0;
        while (!text.empty())
        {
            auto const word = text.substr(0, text.find(' ', text.find_first_not_of(' ')));
            text.remove_prefix(word.size());
            auto const taken = Columns(word);
            bool const breaks = used != 0 && used + taken > columns && word[0] == ' ';
            wrapped += breaks ? "\n" : "";
            wrapped += breaks ? word.substr(1) : word;
            used = breaks ? taken - 1 : used + taken;
        }
        return wrapped;
    }
} // namespace host
