#pragma once

#include <string>

namespace host
{
    // The exception being handled, for a person: its code, where it has one, and its message. Call it in a
    // catch block.
    std::string DescribeCurrentException();
} // namespace host
