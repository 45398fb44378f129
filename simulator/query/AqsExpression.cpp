#include "simulator/query/AqsExpression.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace simulator::aqs
{
    namespace
    {
        // A value of another kind than the operand's answers no to everything but "differs".
        template <typename T, typename Predicate>
        bool Both(Value const& left, Value const& right, Predicate predicate)
        {
            auto const* first = std::get_if<T>(&left);
            auto const* second = std::get_if<T>(&right);
            return first && second && predicate(*first, *second);
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
            return value == operand;
        case Operator::NotEqual:
            return value != operand;
        case Operator::Less:
            return Both<std::int32_t>(value, operand, std::less<>());
        case Operator::LessOrEqual:
            return Both<std::int32_t>(value, operand, std::less_equal<>());
        case Operator::Greater:
            return Both<std::int32_t>(value, operand, std::greater<>());
        case Operator::GreaterOrEqual:
            return Both<std::int32_t>(value, operand, std::greater_equal<>());
        case Operator::Contains:
            return Both<std::string>(value, operand, ContainsText);
        case Operator::ContainsNot:
            return Both<std::string>(value, operand, std::not_fn(ContainsText));
        case Operator::BeginsWith:
            return Both<std::string>(
                value, operand, [](std::string_view whole, std::string_view part) { return whole.starts_with(part); });
        case Operator::EndsWith:
            return Both<std::string>(
                value, operand, [](std::string_view whole, std::string_view part) { return whole.ends_with(part); });
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
