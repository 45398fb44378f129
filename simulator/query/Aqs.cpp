#include "simulator/query/Aqs.h"

#include "simulator/query/AqsExpression.h"
#include "simulator/query/AqsLexer.h"
#include "simulator/query/AqsOperand.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace simulator
{
    namespace aqs
    {
        namespace
        {
            // Parentheses and NOTs within each other. Each costs stack, and the text may be hostile.
            constexpr int deepestNesting = 64;

            bool TakeIf(Lexer& lexer, TokenKind kind)
            {
                if (lexer.Ahead().kind != kind)
                {
                    return false;
                }
                lexer.Take();
                return true;
            }

            // Asks for a search by radio, and selects nothing: in the query it is as if it were not there.
            bool IsInstruction(std::string_view property)
            {
                return SamePropertyName(property, "System.Devices.Aep.Bluetooth.IssueInquiry");
            }

            // The grammar, one function a rule, which returns nothing where there are instructions alone:
            //
            //   chain      = unary { [AND | OR] unary }
            //   unary      = NOT unary | "(" chain ")" | comparison
            //   comparison = property ":" [operator] operand
            std::optional<Expression> ParseChain(Lexer& lexer, int depth);

            std::optional<Expression> ParseComparison(Lexer& lexer)
            {
                auto const property = lexer.Take();
                if (property.kind != TokenKind::Word)
                {
                    Fail("a property is expected", property.position);
                }
                auto const kind = KindOfProperty(property.text);
                if (kind == PropertyKind::Unknown)
                {
                    Fail("no property is named '" + std::string(property.text) + "'", property.position);
                }
                auto const compare = lexer.Take();
                if (compare.kind != TokenKind::Compare)
                {
                    Fail("a colon is expected", compare.position);
                }
                auto operand = ReadOperand(lexer.Take(), kind);
                if (!Fits(compare.compare, operand))
                {
                    Fail("the operator does not fit its operand", compare.position);
                }
                if (IsInstruction(property.text))
                {
                    return std::nullopt;
                }
                Comparison comparison{std::string(property.text), compare.compare, std::move(operand)};
                return Expression{Expression::Kind::Comparison, std::move(comparison), {}};
            }

            std::optional<Expression> ParseUnary(Lexer& lexer, int depth)
            {
                auto const first = lexer.Ahead();
                if (depth > deepestNesting)
                {
                    Fail("nested too deeply", first.position);
                }
                if (TakeIf(lexer, TokenKind::Not))
                {
                    auto negated = ParseUnary(lexer, depth + 1);
                    return negated ? std::optional(Expression{Expression::Kind::Not, {}, {*std::move(negated)}})
                                   : std::nullopt;
                }
                if (!TakeIf(lexer, TokenKind::Open))
                {
                    return ParseComparison(lexer);
                }
                auto inside = ParseChain(lexer, depth + 1);
                if (!TakeIf(lexer, TokenKind::Close))
                {
                    Fail("no closing parenthesis for the one", first.position);
                }
                return inside;
            }

            bool BeginsUnary(TokenKind kind)
            {
                return kind == TokenKind::Word || kind == TokenKind::Not || kind == TokenKind::Open;
            }

            std::optional<Expression::Link> TakeLink(Lexer& lexer)
            {
                if (TakeIf(lexer, TokenKind::Or))
                {
                    return Expression::Link::Or;
                }
                if (TakeIf(lexer, TokenKind::And) || BeginsUnary(lexer.Ahead().kind))
                {
                    return Expression::Link::And;
                }
                return std::nullopt;
            }

            std::optional<Expression> ParseChain(Lexer& lexer, int depth)
            {
                std::vector<Expression> terms;
                std::optional link = Expression::Link::And;
                do
                {
                    if (auto term = ParseUnary(lexer, depth))
                    {
                        term->link = terms.empty() ? Expression::Link::And : *link;
                        terms.push_back(*std::move(term));
                    }
                    link = TakeLink(lexer);
                } while (link);
                if (terms.size() > 1)
                {
                    return Expression{Expression::Kind::Chain, {}, std::move(terms)};
                }
                return terms.empty() ? std::nullopt : std::optional(std::move(terms.front()));
            }

            std::optional<Expression> ParseWhole(std::string_view text)
            {
                Lexer lexer(text);
                auto whole = ParseChain(lexer, 0);
                if (lexer.Ahead().kind != TokenKind::End)
                {
                    Fail("the query should end", lexer.Ahead().position);
                }
                return whole;
            }

            std::optional<std::int64_t> RequiredKind(Expression const& expression);

            std::optional<std::int64_t> KindOfChain(std::vector<Expression> const& terms)
            {
                std::optional<std::int64_t> kind;
                for (auto const& term : terms)
                {
                    if (term.link == Expression::Link::Or)
                    {
                        if (kind != RequiredKind(term))
                        {
                            kind.reset(); // neither side of it is required
                        }
                    }
                    else if (!kind)
                    {
                        kind = RequiredKind(term);
                    }
                }
                return kind;
            }

            std::optional<std::int64_t> RequiredKind(Expression const& expression)
            {
                auto const& comparison = expression.comparison;
                switch (expression.kind)
                {
                case Expression::Kind::Comparison:
                    if (comparison.compare == Operator::Equal &&
                        SamePropertyName(comparison.property, "System.Devices.DevObjectType"))
                    {
                        return AsInteger(comparison.operand);
                    }
                    break;
                case Expression::Kind::Chain:
                    return KindOfChain(expression.operands);
                case Expression::Kind::Not:
                    break;
                }
                return std::nullopt;
            }
        } // namespace
    }     // namespace aqs

    Query Query::Parse(std::string_view text)
    {
        Query query;
        if (std::ranges::all_of(text, aqs::IsBlank))
        {
            query.m_blank = !text.empty();
        }
        else if (auto whole = aqs::ParseWhole(text))
        {
            query.m_expression = std::make_shared<aqs::Expression const>(*std::move(whole));
        }
        return query;
    }

    bool Query::Matches(Properties const& properties) const
    {
        return !m_expression || aqs::Holds(*m_expression, properties);
    }

    bool Query::IsBlank() const
    {
        return m_blank;
    }

    std::optional<std::int64_t> Query::Kind() const
    {
        return m_expression ? aqs::RequiredKind(*m_expression) : std::nullopt;
    }
} // namespace simulator
