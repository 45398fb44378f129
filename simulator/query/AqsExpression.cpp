#include "simulator/query/AqsExpression.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace simulator::aqs
{
    namespace
    {
        // A value of another kind than the operand's answers no to everything but "differs".
        template <typename Predicate>
        bool Compare(Value const& left, Value const& right, Predicate predicate)
        {
            auto const first = AsInteger(left);
            auto const second = AsInteger(right);
            return first && second && predicate(*first, *second);
        }

        // Of a list one element will do.
        template <typename T, typename Predicate>
        bool Any(Value const& value, T const& operand, Predicate predicate)
        {
            if (auto const* one = std::get_if<T>(&value))
            {
                return predicate(*one, operand);
            }
            auto const* list = std::get_if<std::vector<T>>(&value);
            return list && std::ranges::any_of(*list, [&](T const& one) { return predicate(one, operand); });
        }

        template <typename Predicate>
        bool AnyText(Value const& value, Value const& operand, Predicate predicate)
        {
            auto const* text = std::get_if<std::string>(&operand);
            return text && Any(value, *text, predicate);
        }

        bool Equal(Value const& value, Value const& operand)
        {
            auto const* id = std::get_if<Guid>(&operand);
            return value == operand || AnyText(value, operand, std::equal_to<>()) ||
                   (id && Any(value, *id, std::equal_to<>()));
        }

        bool IsText(Value const& value)
        {
            return std::holds_alternative<std::string>(value) || std::holds_alternative<Texts>(value);
        }

        bool ContainsText(std::string_view whole, std::string_view part)
        {
            // Not std::ranges::search: clang 14 does not compile what it returns.
            auto const same = [](char left, char right) { return ToLower(left) == ToLower(right); };
            return part.empty() ||
                   std::search(whole.begin(), whole.end(), part.begin(), part.end(), same) != whole.end();
        }

        bool ChainHolds(std::vector<Expression> const& terms, Properties const& properties)
        {
            bool holds = true;
            for (auto const& term : terms)
            {
                holds = term.link == Expression::Link::And ? holds && Holds(term, properties)
                                                           : holds || Holds(term, properties);
            }
            return holds;
        }
    } // namespace

    bool Holds(Comparison const& comparison, Properties const& properties)
    {
        auto const found = properties.find(comparison.property);
        auto const value = found == properties.end() ? Value{} : found->second;
        auto const& operand = comparison.operand;
        switch (comparison.compare)
        {
        case Operator::Equal:
            return Equal(value, operand);
        case Operator::NotEqual:
            return (value != Value{} || operand == Value{}) && !Equal(value, operand);
        case Operator::Less:
            return Compare(value, operand, std::less<>());
        case Operator::LessOrEqual:
            return Compare(value, operand, std::less_equal<>());
        case Operator::Greater:
            return Compare(value, operand, std::greater<>());
        case Operator::GreaterOrEqual:
            return Compare(value, operand, std::greater_equal<>());
        case Operator::Contains:
            return AnyText(value, operand, ContainsText);
        case Operator::ContainsNot:
            return IsText(value) && !AnyText(value, operand, ContainsText);
        case Operator::BeginsWith:
            return AnyText(value, operand,
                           [](std::string_view whole, std::string_view part) { return whole.starts_with(part); });
        case Operator::EndsWith:
            return AnyText(value, operand,
                           [](std::string_view whole, std::string_view part) { return whole.ends_with(part); });
        }
        return false;
    }

    bool Holds(Expression const& expression, Properties const& properties)
    {
        switch (expression.kind)
        {
        case Expression::Kind::Comparison:
            return Holds(expression.comparison, properties);
        case Expression::Kind::Chain:
            return ChainHolds(expression.operands, properties);
        case Expression::Kind::Not:
            return !Holds(expression.operands.front(), properties);
        }
        return false;
    }
} // namespace simulator::aqs
