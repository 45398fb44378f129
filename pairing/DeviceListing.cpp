#include "pairing/DeviceListing.h"

#include "pairing/SplitText.h"
#include "pairing/TextLines.h"

#include <cstddef>
#include <string_view>

namespace vorlink
{
    namespace
    {
        constexpr std::string_view leInstance = R"(BTHLE\Dev_)";
        constexpr std::string_view leDescription = "?? LE ??";
        constexpr std::size_t addressPiece = 3;

        bool Contains(std::string_view text, std::string_view part)
        {
            return text.find(part) != std::string_view::npos;
        }
    } // namespace

    void ReadListing(std::istream& listing, std::ostream& echo, ListingEvents const& events)
    {
        std::string description; // of the latest identifier, echoed again behind every later line
        std::string echoed;      // in one piece: others print too
        for (std::string line; ReadTextLine(listing, line);)
        {
            if (!line.empty())
            {
                echoed = line;
                echoed += '\n';
                echoed += description;
                echoed += '\n';
                echo << echoed;
            }
            if (!Contains(line, leInstance))
            {
                continue;
            }
            events.instanceFound(line);
            if (!ReadTextLine(listing, description))
            {
                description.clear(); // the listing ends here: the device goes without one
            }
            echo << echoed.assign(description).append("\n");
            if (Contains(description, leDescription))
            {
                auto const pieces = SplitText(line, "&");
                if (pieces.size() > addressPiece)
                {
                    events.addressFound(pieces[addressPiece]);
                }
            }
        }
    }
} // namespace vorlink
