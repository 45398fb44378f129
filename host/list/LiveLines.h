#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace host
{
    // Lines on the console that are written over in place, without a flicker; those that the window has no room for are
    // left out at the end.
    class LiveLines
    {
    public:
        void Show(std::vector<std::string> lines);

    private:
        std::size_t m_shown = 0;
    };
} // namespace host
