// Any bytes as the plug-and-play tool's listing: every piece found is the fourth of its line.
#include "fuzz/Require.h"
#include "pairing/DeviceListing.h"

#include <cstdint>
#include <sstream>

namespace
{
    using fuzz::Require;

    std::string FourthPiece(std::string const& line)
    {
        std::size_t begin = 0;
        for (int skipped = 0; skipped < 3; ++skipped)
        {
            begin = line.find('&', begin) + 1;
            Require(begin != 0);
        }
        return line.substr(begin, line.find('&', begin) - begin);
    }
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::istringstream listing(std::string(reinterpret_cast<char const*>(data), size));
    std::ostringstream echo;
    std::string latest;
    vorlink::ReadListing(listing, echo,
                         {[&](std::string const& line) {
                              Require(line.find(R"(BTHLE\Dev_)") != std::string::npos);
                              latest = line;
                          },
                          [&](std::string const& piece) {
                              Require(piece == FourthPiece(latest));
                              latest.clear();
                          }});
    Require(size != 0 || echo.str().empty());
    return 0;
}
