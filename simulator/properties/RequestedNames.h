// The names of additional properties that a program asks for.
#pragma once

#include "platform/abi/Collections.h"

#include <string>
#include <vector>

namespace simulator
{
    struct RequestedNames
    {
        HRESULT code = S_OK; // what the platform answers to the list
        std::vector<std::string> names;
    };

    // Null is an empty list. A name that no property has, or none, is refused.
    RequestedNames ReadNames(platform::IIterable<HSTRING>* list);
} // namespace simulator
