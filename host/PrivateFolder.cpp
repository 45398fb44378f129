#include "host/PrivateFolder.h"

#include <windows.h>

#include <chrono>
#include <string>
#include <thread>

namespace host
{
    namespace
    {
        std::filesystem::path MakeFolder()
        {
            auto const parent = std::filesystem::temp_directory_path();
            for (auto number = GetTickCount64();; ++number)
            {
                auto const name = "vorlinkctl-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(number);
                if (std::filesystem::create_directory(parent / name))
                {
                    return parent / name;
                }
            }
        }
    } // namespace

    PrivateFolder::PrivateFolder()
        : m_before(std::filesystem::current_path())
        , m_folder(MakeFolder())
    {
        std::filesystem::current_path(m_folder);
    }

    PrivateFolder::~PrivateFolder()
    {
        std::error_code error;
        std::filesystem::current_path(m_before, error);
        // A file in it may be open still, for the rest of a write or for a scanner of viruses.
        for (int attempt = 0; attempt < 100; ++attempt)
        {
            std::filesystem::remove_all(m_folder, error);
            if (!error)
            {
                return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }
} // namespace host
