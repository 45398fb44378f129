// What an operand means to the property that it is compared with.
#pragma once

#include "simulator/properties/Property.h"
#include "simulator/query/AqsLexer.h"

namespace simulator::aqs
{
    // The operand as a value of a property's kind, or as an element of one that is a list. Throws QueryError when it is
    // missing or of another kind.
    Value ReadOperand(Token const& operand, PropertyKind kind);

    // Order is for numbers and, in vain, for GUIDs; parts are for texts; nothing but equality is asked of null.
    bool Fits(Operator compare, Value const& operand);
} // namespace simulator::aqs
