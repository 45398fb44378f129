// A query once understood: comparisons at the leaves, chains of AND and OR, and NOT, above them.
#pragma once

#include "simulator/properties/Property.h"
#include "simulator/query/AqsLexer.h"

#include <string>
#include <vector>

namespace simulator::aqs
{
    struct Comparison
    {
        std::string property;
        Operator compare = Operator::Equal;
        Value operand; // monostate: null
    };

    struct Expression
    {
        enum class Kind
        {
            Comparison,
            Chain,
            Not,
        };

        enum class Link
        {
            And,
            Or,
        };

        Kind kind = Kind::Comparison;
        Comparison comparison;            // of a Comparison
        std::vector<Expression> operands; // of the others; Not has one
        Link link = Link::And;            // to all that stands before it in its chain
    };

    bool Holds(Comparison const& comparison, Properties const& properties);
    bool Holds(Expression const& expression, Properties const& properties);
} // namespace simulator::aqs
