#include "simulator/query/AqsOperand.h"

#include "simulator/properties/HexText.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace simulator::aqs
{
    namespace
    {
        std::optional<Value> ReadBoolean(Token const& operand)
        {
            auto const same = [&operand](std::string_view literal) { return SamePropertyName(operand.text, literal); };
            if (operand.kind == TokenKind::Word && same("System.StructuredQueryType.Boolean#True"))
            {
                return Value{true};
            }
            if (operand.kind == TokenKind::Word && same("System.StructuredQueryType.Boolean#False"))
            {
                return Value{false};
            }
            return std::nullopt;
        }

        template <typename Integer>
        std::optional<Value> ReadInteger(Token const& operand)
        {
            auto const digits = operand.text.substr(operand.text.starts_with('+') ? 1 : 0);
            Integer number = 0;
            auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
            if (operand.kind != TokenKind::Integer || error != std::errc{} || end != digits.data() + digits.size())
            {
                return std::nullopt;
            }
            return Value{number};
        }

        std::string WithSingleQuotes(std::string_view text)
        {
            std::string plain;
            for (std::size_t at = 0; at < text.size(); at += text[at] == '"' ? 2u : 1u)
            {
                plain += text[at];
            }
            return plain;
        }

        std::optional<Value> ReadText(Token const& operand)
        {
            if (operand.kind != TokenKind::Quoted && (operand.kind != TokenKind::Word || ReadBoolean(operand)))
            {
                return std::nullopt;
            }
            return Value{WithSingleQuotes(operand.text)}; // a bare word has none
        }

        std::optional<Value> ReadGuid(Token const& operand)
        {
            if (operand.kind != TokenKind::Quoted && operand.kind != TokenKind::Braced)
            {
                return std::nullopt;
            }
            return ParseGuid(operand.text);
        }

        std::optional<Value> ReadAs(PropertyKind kind, Token const& operand)
        {
            switch (kind)
            {
            case PropertyKind::Boolean:
                return ReadBoolean(operand);
            case PropertyKind::UInt8:
                return ReadInteger<std::uint8_t>(operand);
            case PropertyKind::UInt16:
                return ReadInteger<std::uint16_t>(operand);
            case PropertyKind::Int32:
                return ReadInteger<std::int32_t>(operand);
            case PropertyKind::UInt32:
                return ReadInteger<std::uint32_t>(operand);
            case PropertyKind::String:
            case PropertyKind::StringArray:
                return ReadText(operand);
            case PropertyKind::Guid:
            case PropertyKind::GuidArray:
                return ReadGuid(operand);
            case PropertyKind::DateTime: // null alone can be written
            case PropertyKind::ByteArray:
            case PropertyKind::Unknown:
                break;
            }
            return std::nullopt;
        }
    } // namespace

    Value ReadOperand(Token const& operand, PropertyKind kind)
    {
        switch (operand.kind)
        {
        case TokenKind::Null:
            return {};
        case TokenKind::Word:
        case TokenKind::Quoted:
        case TokenKind::Braced:
        case TokenKind::Integer:
            break;
        default:
            Fail("an operand is expected", operand.position);
        }
        auto value = ReadAs(kind, operand);
        if (!value)
        {
            Fail("'" + std::string(operand.text) + "' is not of the property's type", operand.position);
        }
        return *std::move(value);
    }

    bool Fits(Operator compare, Value const& operand)
    {
        switch (compare)
        {
        case Operator::Equal:
        case Operator::NotEqual:
            return true;
        case Operator::Less:
        case Operator::LessOrEqual:
        case Operator::Greater:
        case Operator::GreaterOrEqual:
            return AsInteger(operand) || std::holds_alternative<Guid>(operand);
        case Operator::Contains:
        case Operator::ContainsNot:
        case Operator::BeginsWith:
        case Operator::EndsWith:
            return std::holds_alternative<std::string>(operand);
        }
        return false;
    }
} // namespace simulator::aqs
