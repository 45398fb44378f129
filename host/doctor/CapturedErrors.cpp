#include "host/doctor/CapturedErrors.h"

#include <fcntl.h>
#include <io.h>

#include <array>
#include <cstddef>
#include <cstdio>

namespace host
{
    namespace
    {
        constexpr int standardError = 2;
    }

    CapturedErrors::CapturedErrors()
    {
        std::array<int, 2> ends{};
        constexpr unsigned size = 65'536; // nobody reads before the end
        if (_pipe(ends.data(), size, _O_BINARY | _O_NOINHERIT) != 0)
        {
            return;
        }
        std::fflush(stderr);
        m_pipe = ends[0];
        m_before = _dup(standardError);
        _dup2(ends[1], standardError);
        _close(ends[1]);
    }

    CapturedErrors::~CapturedErrors()
    {
        Take();
    }

    std::string CapturedErrors::Take()
    {
        std::string text;
        if (m_pipe == -1)
        {
            return text;
        }
        std::fflush(stderr);
        // The pipe's last writing end goes with this, also where there was no standard error before.
        m_before == -1 ? _close(standardError) : _dup2(m_before, standardError);
        std::array<char, 4096> part{};
        for (int size = 0; (size = _read(m_pipe, part.data(), static_cast<unsigned>(part.size()))) > 0;)
        {
            text.append(part.data(), static_cast<std::size_t>(size));
        }
        _close(m_pipe);
        m_pipe = -1;
        if (m_before != -1)
        {
            _close(m_before);
        }
        return text;
    }
} // namespace host
