#include "host/Await.h"

#include <thread>

namespace host
{
    Awaited Await(Session& session, Interruption const& interruption, Waiting const& waiting, Progress& progress,
                  std::function<bool()> const& isSilent)
    {
        for (;;)
        {
            auto const progressed = WaitForProgress();
            session.Log().Poll();
            if (progressed.answer)
            {
                return {Ending::Answered, progressed};
            }
            if (interruption.Requested())
            {
                return {Ending::Interrupted, progressed};
            }
            if (progressed.returned && isSilent())
            {
                return {Ending::Silent, progressed};
            }
            auto const now = Clock::now();
            if (now >= waiting.end)
            {
                auto const last = WaitForProgress(); // it may have come in this very moment
                session.Log().Poll();
                return {last.answer ? Ending::Answered : Ending::TimeLimit, last};
            }
            progress.Show(progressed.returned ? waiting.working : waiting.finding,
                          std::chrono::floor<std::chrono::seconds>(now - waiting.start));
        }
    }

    void AwaitRecords(Session& session, std::function<bool()> const& areThere)
    {
        auto const end = Clock::now() + std::chrono::seconds(2);
        session.Log().Poll();
        while (!areThere() && Clock::now() < end)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            session.Log().Poll();
        }
    }
} // namespace host
