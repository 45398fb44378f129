#include "host/page/PageFile.h"

#include "host/Terminal.h"
#include "host/Text.h"
#include "host/WideText.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

namespace host
{
    namespace
    {
        std::string MakeNonce()
        {
            std::random_device random;
            std::array<char, 9> digits{};
            std::string nonce;
            for (int word = 0; word < 4; ++word)
            {
                std::snprintf(digits.data(), digits.size(), "%08x", random());
                nonce += digits.data();
            }
            return nonce;
        }
    } // namespace

    bool WritePageFile(std::string const& name,
                       std::function<void(std::string const& nonce, PageWriter const& write)> const& writePage)
    {
        std::filesystem::path const path(ToUtf16(name));
        auto const fresh = std::filesystem::path(path.native() + L".new");
        std::ofstream file(fresh, std::ios::binary);
        writePage(MakeNonce(), [&](std::string_view piece) { file << piece; });
        file.close();
        bool const written = !file.fail();
        std::error_code error;
        if (written)
        {
            std::filesystem::rename(fresh, path, error);
        }
        if (!written || error)
        {
            std::filesystem::remove(fresh, error);
            PrintError("vorlinkctl: " + Quoted(name) + " cannot be written; what was there is still there.\n");
            return false;
        }
        return true;
    }
} // namespace host
