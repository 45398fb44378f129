// Cuts a query into words, operators, operands and parentheses.
#pragma once

#include "simulator/properties/Property.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace simulator::aqs
{
    enum class Operator
    {
        Equal,
        NotEqual,
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual,
        Contains,
        ContainsNot,
        BeginsWith,
        EndsWith,
    };

    enum class TokenKind
    {
        End,
        Open,
        Close,
        And,
        Or,
        Not,
        Word,    // a property's name, bare text, or a Boolean literal
        Compare, // a colon and its operator
        Quoted,  // text without the quotes around it; those within are still doubled
        Braced,  // a GUID, braces included
        Integer, // perhaps with a sign
        Null,    // []
    };

    struct Token
    {
        TokenKind kind = TokenKind::End;
        std::string_view text;
        std::size_t position = 0; // in bytes, for messages
        Operator compare = Operator::Equal;
    };

    class Lexer
    {
    public:
        explicit Lexer(std::string_view text);

        // The token that Take() would hand out.
        Token const& Ahead() const
        {
            return m_ahead;
        }

        Token Take();

    private:
        Token Scan();
        Token ScanCompare();
        Token ScanDelimited(TokenKind kind, char last);
        Token ScanWord();
        void SkipBlanks();
        Token Cut(TokenKind kind, std::size_t length);

        std::string_view const m_text;
        std::size_t m_position = 0;
        Token m_ahead;
    };

    bool IsBlank(char character) noexcept;

    // "reason at byte 12"
    [[noreturn]] void Fail(std::string const& reason, std::size_t position);
} // namespace simulator::aqs
