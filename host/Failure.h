#pragma once

#include <string>

namespace host
{
    // An operation failed on its own thread; the text is the error's code and message.
    struct Failure
    {
        std::string text;
    };

    // The exception being handled, for a person: its code, where it has one, and its message. Call it in a
    // catch block.
    std::string DescribeCurrentException();
} // namespace host
