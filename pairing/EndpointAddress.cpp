#include "pairing/EndpointAddress.h"

#include "pairing/SplitText.h"

#include <cstdlib>

namespace vorlink
{
    EndpointAddress AddressOf(std::string const& identifier)
    {
        EndpointAddress address;
        auto const pieces = SplitText(identifier, "-");
        if (pieces.size() > 1)
        {
            for (auto const& piece : SplitText(pieces[1], ":"))
            {
                address.text += piece;
            }
        }
        address.number = std::strtoull(address.text.c_str(), nullptr, 16);
        return address;
    }
} // namespace vorlink
