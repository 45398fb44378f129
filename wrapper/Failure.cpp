#include "wrapper/Failure.h"

#include "wrapper/Text.h"

#include <winrt/base.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <new>
#include <system_error>

namespace wrapper
{
    namespace
    {
        struct Meaning
        {
            std::int32_t code;
            char const* text;
        };

        constexpr Meaning meanings[] = {
            {VORLINK_OK, ""},
            {VORLINK_INVALID_ARGUMENT, "An argument is wrong."},
            {VORLINK_LIBRARY_NOT_FOUND, "There is no vorlink.dll beside vorlink_c.dll."},
            {VORLINK_LIBRARY_UNUSABLE, "The vorlink.dll beside vorlink_c.dll cannot be used."},
            {VORLINK_PLATFORM_FAILURE, "The platform failed."},
            {VORLINK_OUT_OF_MEMORY, "There is not enough memory."},
            {VORLINK_BUSY, "A pairing or an unpairing lasts: its report has not come and it was not forgotten, or its "
                           "search still runs."},
            {VORLINK_NO_THREAD, "The system gave the library no thread."},
            {VORLINK_UNKNOWN_FAILURE, "The library failed in a way that vorlink_c.dll does not know."},
            {VORLINK_STILL_RUNNING, "Done, but a callback or a search still runs: its context is still needed."},
        };

        void Keep(std::string_view sentence, std::int32_t hresult) noexcept
        {
            auto& last = TheLastError();
            CopyText(last.sentence, sentence);
            last.hresult = hresult;
        }

        std::string Hexadecimal(std::int32_t code)
        {
            std::array<char, 16> text{};
            std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(code));
            return text.data();
        }

        // A class that is not registered, or registered without what it should have.
        bool IsMissingClass(std::int32_t hresult)
        {
            auto const code = static_cast<std::uint32_t>(hresult);
            return code == 0x80040154 || code == 0x80004002;
        }

        std::string PlatformSentence(std::int32_t hresult, std::wstring_view message)
        {
            if (IsMissingClass(hresult))
            {
                return "The platform's class for Bluetooth devices cannot be activated (" + Hexadecimal(hresult) +
                       "): this Windows has none, or the program's manifest, which registers another, is missing.";
            }
            auto const text = ToUtf8(message);
            return "The platform failed: " + Hexadecimal(hresult) + (text.empty() ? "." : ": " + text);
        }

        // Throws when there is no memory for the sentence.
        std::int32_t Describe()
        {
            try
            {
                throw;
            }
            catch (Failure const& failure)
            {
                Keep(failure.sentence, 0);
                return failure.code;
            }
            catch (winrt::hresult_error const& error)
            {
                std::int32_t const hresult = error.code();
                Keep(PlatformSentence(hresult, error.message()), hresult);
                return VORLINK_PLATFORM_FAILURE;
            }
            catch (std::bad_alloc const&)
            {
                return Remember(VORLINK_OUT_OF_MEMORY);
            }
            catch (std::system_error const&)
            {
                return Remember(VORLINK_NO_THREAD);
            }
            catch (std::exception const& error)
            {
                Keep(std::string(CodeText(VORLINK_UNKNOWN_FAILURE)) + " It says: " + error.what(), 0);
                return VORLINK_UNKNOWN_FAILURE;
            }
            catch (...)
            {
                return Remember(VORLINK_UNKNOWN_FAILURE);
            }
        }
    } // namespace

    char const* CodeText(std::int32_t code) noexcept
    {
        auto const* const found = std::ranges::find(meanings, code, &Meaning::code);
        return found == std::end(meanings) ? "This is none of Vorlink's codes." : found->text;
    }

    LastError& TheLastError() noexcept
    {
        thread_local LastError last;
        return last;
    }

    std::int32_t Remember(std::int32_t code) noexcept
    {
        Keep(CodeText(code), 0);
        return code;
    }

    std::int32_t RememberException() noexcept
    {
        try
        {
            return Describe();
        }
        catch (...)
        {
            return Remember(VORLINK_OUT_OF_MEMORY);
        }
    }
} // namespace wrapper
