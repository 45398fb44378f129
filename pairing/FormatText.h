#pragma once

#include <string>
#include <string_view>

namespace vorlink
{
    // What printf makes of `format` without an argument: "%%" becomes "%". A conversion, which would read an
    // argument that is not there, stands as it is written.
    std::string FormatWithoutArguments(std::string_view format);
} // namespace vorlink
