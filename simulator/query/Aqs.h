// The platform's query language, as far as it selects devices: `property:operator operand` joined by AND,
// OR, NOT, parentheses, or mere juxtaposition (which is AND). AND and OR have one rank, and bind from left to right.
//
// Settled here where the platform leaves it open:
// - Whether a text contains another does not depend on the case of ASCII letters. Other comparisons of texts are exact.
// - A property without a value equals null alone, and no other comparison with it holds.
#pragma once

#include "simulator/properties/Property.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace simulator
{
    // The platform answers E_INVALIDARG to what throws this.
    class QueryError : public std::runtime_error
    {
    public:
        using std::runtime_error::runtime_error;
    };

    namespace aqs
    {
        struct Expression;
    }

    class Query
    {
    public:
        // Empty or blank text matches everything, and so does one of instructions alone.
        static Query Parse(std::string_view text);

        // A property that `properties` does not hold counts as null.
        bool Matches(Properties const& properties) const;

        // White space only, and some of it: the platform accepts it for a watcher, which then fails to start.
        bool IsBlank() const;

        // The number of DevObjectType that whatever the query selects must have, where it names one.
        std::optional<std::int64_t> Kind() const;

    private:
        std::shared_ptr<aqs::Expression const> m_expression; // none: matches everything
        bool m_blank = false;
    };
} // namespace simulator
