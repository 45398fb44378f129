#include "host/Failure.h"

#include "host/WideText.h"

#include <winrt/base.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <system_error>

namespace host
{
    namespace
    {
        std::string Hexadecimal(std::int32_t code)
        {
            std::array<char, 16> text{};
            std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(code));
            return text.data();
        }

        std::string WithCode(std::string const& code, std::string const& message)
        {
            return message.empty() ? code : code + ": " + message;
        }
    } // namespace

    std::string DescribeCurrentException()
    {
        try
        {
            throw;
        }
        catch (winrt::hresult_error const& error)
        {
            return WithCode(Hexadecimal(error.code()), ToUtf8(error.message()));
        }
        catch (std::system_error const& error)
        {
            return WithCode(std::string(error.code().category().name()) + " error " +
                                std::to_string(error.code().value()),
                            error.what());
        }
        catch (std::exception const& error)
        {
            return error.what();
        }
        catch (...)
        {
            return "an error of a type that the program does not know";
        }
    }
} // namespace host
