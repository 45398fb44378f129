#include "simulator/query/AqsLexer.h"

#include "simulator/query/Aqs.h"

#include <algorithm>

namespace simulator::aqs
{
    namespace
    {
        bool IsDigit(char character) noexcept
        {
            return character >= '0' && character <= '9';
        }

        // What may stand in a word: bytes of UTF-8 beyond ASCII may, what the language itself uses may not.
        bool IsWordCharacter(char character) noexcept
        {
            constexpr std::string_view reserved = "()[]{}:\"=<>~";
            return !IsBlank(character) && reserved.find(character) == std::string_view::npos;
        }

        std::size_t WordLength(std::string_view text)
        {
            return static_cast<std::size_t>(std::ranges::find_if_not(text, IsWordCharacter) - text.begin());
        }

        struct OperatorSpelling
        {
            std::string_view text;
            Operator compare;
        };

        // What may follow the colon (":~~" is a colon and "~~"), the longer spelling before the one it begins with.
        constexpr OperatorSpelling operators[] = {
            {"=", Operator::Equal},
            {"<>", Operator::NotEqual},
            {"\xE2\x89\xA0", Operator::NotEqual}, // the not-equal sign
            {"-", Operator::NotEqual},
            {"<=", Operator::LessOrEqual},
            {"\xE2\x89\xA4", Operator::LessOrEqual}, // the signs of one character
            {"<", Operator::Less},
            {">=", Operator::GreaterOrEqual},
            {"\xE2\x89\xA5", Operator::GreaterOrEqual},
            {">", Operator::Greater},
            {"~~", Operator::Contains},
            {"~=", Operator::Contains},
            {"~!", Operator::ContainsNot},
            {"~<", Operator::BeginsWith},
            {"~>", Operator::EndsWith},
        };
    } // namespace

    bool IsBlank(char character) noexcept
    {
        return character == ' ' || (character >= '\t' && character <= '\r');
    }

    void Fail(std::string const& reason, std::size_t position)
    {
        auto text = reason + " at byte " + std::to_string(position);
        std::ranges::replace(text, '\0', '?'); // a query may quote one, and what() would end there
        throw QueryError(text);
    }

    Lexer::Lexer(std::string_view text)
        : m_text(text)
    {
        m_ahead = Scan();
    }

    Token Lexer::Take()
    {
        auto const taken = m_ahead;
        m_ahead = Scan();
        return taken;
    }

    Token Lexer::Scan()
    {
        SkipBlanks();
        if (m_position == m_text.size())
        {
            return Cut(TokenKind::End, 0);
        }
        switch (m_text[m_position])
        {
        case '(':
            return Cut(TokenKind::Open, 1);
        case ')':
            return Cut(TokenKind::Close, 1);
        case ':':
            return ScanCompare();
        case '"':
            return ScanDelimited(TokenKind::Quoted, '"');
        case '{':
            return ScanDelimited(TokenKind::Braced, '}');
        case '[':
            if (m_text.substr(m_position).starts_with("[]"))
            {
                return Cut(TokenKind::Null, 2);
            }
            break;
        default:
            if (IsWordCharacter(m_text[m_position]))
            {
                return ScanWord();
            }
        }
        Fail(std::string("unexpected '") + m_text[m_position] + "'", m_position);
    }

    Token Lexer::ScanCompare()
    {
        auto token = Cut(TokenKind::Compare, 1);
        SkipBlanks();
        auto const rest = m_text.substr(m_position);
        if (rest.substr(0, WordLength(rest)) == "NOT")
        {
            m_position += 3;
            token.compare = Operator::NotEqual;
            return token;
        }
        for (auto const& spelling : operators)
        {
            if (rest.starts_with(spelling.text))
            {
                m_position += spelling.text.size();
                token.compare = spelling.compare;
                return token;
            }
        }
        return token; // the colon alone: equal
    }

    Token Lexer::ScanDelimited(TokenKind kind, char last)
    {
        auto end = m_text.find(last, m_position + 1);
        while (kind == TokenKind::Quoted && end != std::string_view::npos && m_text.substr(end + 1).starts_with(last))
        {
            end = m_text.find(last, end + 2);
        }
        if (end == std::string_view::npos)
        {
            Fail(std::string("no closing ") + last + " for what begins", m_position);
        }
        auto token = Cut(kind, end + 1 - m_position);
        if (kind == TokenKind::Quoted)
        {
            token.text = token.text.substr(1, token.text.size() - 2);
        }
        return token;
    }

    Token Lexer::ScanWord()
    {
        auto const length = WordLength(m_text.substr(m_position));
        auto const word = m_text.substr(m_position, length);
        if (word == "AND")
        {
            return Cut(TokenKind::And, length);
        }
        if (word == "OR")
        {
            return Cut(TokenKind::Or, length);
        }
        if (word == "NOT")
        {
            return Cut(TokenKind::Not, length);
        }
        auto const digits = word.substr(word.front() == '-' || word.front() == '+' ? 1 : 0);
        auto const number = !digits.empty() && std::ranges::all_of(digits, IsDigit);
        return Cut(number ? TokenKind::Integer : TokenKind::Word, length);
    }

    void Lexer::SkipBlanks()
    {
        while (m_position < m_text.size() && IsBlank(m_text[m_position]))
        {
            ++m_position;
        }
    }

    Token Lexer::Cut(TokenKind kind, std::size_t length)
    {
        Token token{kind, m_text.substr(m_position, length), m_position};
        m_position += length;
        return token;
    }
} // namespace simulator::aqs
