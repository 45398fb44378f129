#include "host/Learning.h"

#include <chrono>
#include <filesystem>
#include <thread>

namespace host
{
    namespace
    {
        using Clock = std::chrono::steady_clock;

        // The listing comes when the reader has the system make it, and goes as the last thing that the reader does.
        bool WaitForListing(bool there, Clock::time_point end)
        {
            std::error_code ignored;
            while (std::filesystem::exists("ble.jpg", ignored) != there)
            {
                if (Clock::now() > end)
                {
                    return false;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
            return true;
        }
    } // namespace

    bool WaitForLearning()
    {
        auto const end = Clock::now() + std::chrono::seconds(8);
        return WaitForListing(true, end) && WaitForListing(false, end);
    }
} // namespace host
