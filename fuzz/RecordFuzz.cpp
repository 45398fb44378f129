// Any bytes as what a log record is made of: a path, a function's name, and a message's format with integers for
// its arguments. What is written is what printf writes, cut to the buffer.
#include "fuzz/Require.h"
#include "log/Record.h"
#include "pairing/FormatText.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace
{
    using fuzz::Require;

    std::string TakeLine(std::string_view& text)
    {
        auto const line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        return std::string(line.substr(0, line.find('\0')));
    }

    std::size_t CountOf(std::string_view text, std::string_view wanted)
    {
        auto const end = text.find_first_not_of(wanted);
        return std::min(end, text.size());
    }

    // Four digits keep the run quick; eleven are more than printf counts to, and make it fail.
    bool IsUsefulNumber(std::string_view digits)
    {
        return digits.size() <= 4 || (digits.size() > 10 && digits.front() != '0');
    }

    // The length of a conversion that reads one integer or nothing; 0 when the text begins with another.
    std::size_t LengthOfConversion(std::string_view text)
    {
        constexpr std::string_view digits = "0123456789";
        std::size_t length = 1;
        length += CountOf(text.substr(length), "-+ #0");
        auto const width = CountOf(text.substr(length), digits);
        bool useful = IsUsefulNumber(text.substr(length, width));
        length += width;
        if (text.substr(length, 1) == ".")
        {
            ++length;
            auto const precision = CountOf(text.substr(length), digits);
            useful = useful && IsUsefulNumber(text.substr(length, precision));
            length += precision;
        }
        bool const known = length < text.size() && std::string_view("diuxXoc%").find(text[length]) != text.npos;
        return useful && known ? length + 1 : 0;
    }

    // The text with each conversion made harmless that would read what is not there.
    std::string MakeFormat(std::string_view text)
    {
        constexpr int argumentCount = 8;
        std::string format;
        for (int taken = 0; !text.empty();)
        {
            auto const length = text.front() == '%' ? LengthOfConversion(text) : 1;
            bool const reads = length > 1 && text[length - 1] != '%';
            bool const fits = length != 0 && (!reads || ++taken <= argumentCount);
            format += fits ? text.substr(0, length) : "%%";
            text.remove_prefix(fits ? length : 1);
        }
        return format;
    }

    // Gives a function as many integers as MakeFormat lets a format read.
    template <typename Function>
    auto WithIntegers(Function function)
    {
        return function(0, -1, 7, 'x', 65536, -2147483647, 42, 255);
    }

    std::string Build(std::size_t capacity, vorlink::RecordHead const& head, char const* format, ...)
    {
        auto const buffer = std::make_unique<char[]>(capacity); // the sanitizer watches its ends
        std::va_list arguments;
        va_start(arguments, format);
        auto const length = vorlink::BuildRecord({buffer.get(), capacity}, head, format, arguments);
        va_end(arguments);
        Require(length >= 1 && length <= capacity && buffer[length - 1] == '\n');
        return std::string(buffer.get(), length - 1);
    }

    // A head that fills the buffer leaves its last character to the message, and one whose formatting fails takes the
    // last of the head along.
    std::string ExpectedRecord(std::size_t capacity, std::string head, std::optional<std::string> const& message)
    {
        head.resize(std::min(head.size(), std::max<std::size_t>(capacity, 2) - 2));
        if (!message)
        {
            return head.substr(0, std::max<std::size_t>(head.size(), 1) - 1);
        }
        return (head + *message).substr(0, capacity - 1);
    }

    void CheckRecord(std::size_t capacity, vorlink::RecordHead const& head, char const* format)
    {
        static std::string message(100'000, '\0'); // eight integers of 9999 characters each, and what is between
        int const length = WithIntegers(
            [&](auto... integers) { return std::snprintf(message.data(), message.size(), format, integers...); });
        auto const printed =
            length < 0 ? std::nullopt : std::optional(message.substr(0, static_cast<std::size_t>(length)));
        auto const record = WithIntegers([&](auto... integers) { return Build(capacity, head, format, integers...); });
        Require(record == ExpectedRecord(capacity, Build(vorlink::recordCapacity, head, "%s", ""), printed));
    }

    bool HasConversion(std::string_view text)
    {
        for (auto at = text.find('%'); at != text.npos; at = text.find('%', at + 2))
        {
            if (text.substr(at, 2) != "%%")
            {
                return true;
            }
        }
        return false;
    }

    void CheckFormatText(std::string_view text)
    {
        std::string doubled;
        for (auto const character : text)
        {
            doubled.append(character == '%' ? 2 : 1, character);
        }
        Require(vorlink::FormatWithoutArguments(doubled) == text);

        std::string const format(text.substr(0, text.find('\0')));
        if (!HasConversion(format))
        {
            std::string printed(format.size() + 1, '\0');
            printed.resize(static_cast<std::size_t>(std::snprintf(printed.data(), printed.size(), format.c_str(), 0)));
            Require(vorlink::FormatWithoutArguments(format) == printed);
        }
    }
} // namespace

// The first byte is the buffer's size; then come the path, the function's name and the format, a line each.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<char const*>(data), size);
    CheckFormatText(text);
    if (text.empty())
    {
        return 0;
    }
    auto const capacity = data[0] == 0xFF ? vorlink::recordCapacity : data[0] + std::size_t{1};
    text.remove_prefix(1);
    auto const path = TakeLine(text);
    auto const function = TakeLine(text);
    CheckRecord(capacity, {{}, path.c_str(), static_cast<int>(size), function.c_str()}, MakeFormat(text).c_str());
    return 0;
}
