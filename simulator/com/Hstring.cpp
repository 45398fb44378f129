#include "simulator/com/Hstring.h"

#include <windows.h>
#include <winstring.h>

#include <cstddef>

namespace simulator
{
    std::wstring Widen(std::string_view utf8)
    {
        auto const size = static_cast<int>(utf8.size());
        int const needed = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
        std::wstring text(static_cast<std::size_t>(needed), L'\0');
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), needed);
        return text;
    }

    std::string Narrow(std::wstring_view text)
    {
        auto const size = static_cast<int>(text.size());
        int const needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
        std::string utf8(static_cast<std::size_t>(needed), '\0');
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(), needed, nullptr, nullptr);
        return utf8;
    }

    std::string FromHstring(HSTRING text)
    {
        UINT32 size = 0;
        auto const* const characters = WindowsGetStringRawBuffer(text, &size);
        return Narrow({characters, size});
    }

    HRESULT MakeHstring(std::string_view text, HSTRING* result)
    {
        auto const wide = Widen(text);
        return WindowsCreateString(wide.data(), static_cast<UINT32>(wide.size()), result);
    }
} // namespace simulator
