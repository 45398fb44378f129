#pragma once

#include "host/page/PageJson.h"

#include <functional>
#include <string>

namespace host
{
    // Writes a page to the file of this name, whole or not at all; where not, says so. `writePage` is given a nonce for
    // the page.
    bool WritePageFile(std::string const& name,
                       std::function<void(std::string const& nonce, PageWriter const& write)> const& writePage);
} // namespace host
