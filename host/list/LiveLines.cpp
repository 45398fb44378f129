#include "host/list/LiveLines.h"

#include "host/Terminal.h"
#include "host/Text.h"

#include <windows.h>

#include <algorithm>

namespace host
{
    namespace
    {
        // Not the standard handle, which the C library may have taken for its own.
        HANDLE Console()
        {
            static HANDLE const console =
                CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, 0, nullptr);
            return console;
        }

        // From the beginning of a line; one above the screen is the first.
        void MoveUp(std::size_t lines)
        {
            CONSOLE_SCREEN_BUFFER_INFO info{};
            GetConsoleScreenBufferInfo(Console(), &info);
            auto const row = static_cast<std::size_t>(info.dwCursorPosition.Y);
            SetConsoleCursorPosition(Console(), {0, static_cast<SHORT>(row - std::min(row, lines))});
        }

        std::size_t RowsOfWindow()
        {
            CONSOLE_SCREEN_BUFFER_INFO info{};
            GetConsoleScreenBufferInfo(Console(), &info);
            return static_cast<std::size_t>(std::max(2, info.srWindow.Bottom - info.srWindow.Top + 1));
        }
    } // namespace

    void LiveLines::Show(std::vector<std::string> lines)
    {
        lines.resize(std::min(lines.size(), RowsOfWindow() - 1)); // the cursor stands below
        auto const columns = OutputColumns() - 1;
        std::string text;
        for (auto const& line : lines)
        {
            text += PadColumns(line, columns) + "\n";
        }
        auto const left = m_shown > lines.size() ? m_shown - lines.size() : 0;
        for (std::size_t i = 0; i < left; ++i)
        {
            text += std::string(columns, ' ') + "\n";
        }
        MoveUp(m_shown);
        Print(text);
        MoveUp(left);
        m_shown = lines.size();
    }
} // namespace host
