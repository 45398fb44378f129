// Where an echo goes that nobody reads.
#pragma once

#include <iostream>
#include <streambuf>

namespace bench
{
    class Nowhere : public std::streambuf
    {
    protected:
        int_type overflow(int_type character) override
        {
            return traits_type::not_eof(character);
        }

        std::streamsize xsputn(char const*, std::streamsize count) override
        {
            return count;
        }
    };

    // While it lives, std::cout prints nothing: a console would be all that is measured.
    class Silence
    {
    public:
        Silence()
            : m_before(std::cout.rdbuf(&m_nowhere))
        {
        }

        Silence(Silence const&) = delete;
        Silence& operator=(Silence const&) = delete;

        ~Silence()
        {
            std::cout.rdbuf(m_before);
        }

    private:
        Nowhere m_nowhere;
        std::streambuf* m_before;
    };
} // namespace bench
