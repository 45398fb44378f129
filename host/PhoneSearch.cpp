#include "host/PhoneSearch.h"

#include "host/Interruption.h"
#include "host/Operation.h"
#include "host/SearchLog.h"
#include "host/WideText.h"

#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace host
{
    namespace
    {
        // The library ends a search after 25 s. It has ended by now, also if the log did not tell.
        constexpr std::chrono::seconds longestSearch{28};

        // The library's callback carries no context, so what it shares with the waiting thread is global.
        struct
        {
            std::mutex mutex;
            std::condition_variable changed;
            std::vector<std::string> names;
        } shared;

        void OnDevice(wchar_t const* name, std::uint32_t length) noexcept
        {
            std::lock_guard const lock(shared.mutex);
            shared.names.push_back(ToUtf8({name, length}));
            shared.changed.notify_all();
        }

        // Those reported since the last time; waits a little for one when there is none.
        std::vector<std::string> TakeNames()
        {
            std::unique_lock lock(shared.mutex);
            shared.changed.wait_for(lock, std::chrono::milliseconds(20), [] { return !shared.names.empty(); });
            return std::exchange(shared.names, {});
        }

        // On a thread of its own, for the library may block without limit; it may stay behind.
        template <typename Work>
        std::shared_future<void> Begin(Work work)
        {
            std::packaged_task<void()> task(std::move(work));
            auto done = task.get_future().share();
            std::thread(std::move(task)).detach();
            return done;
        }

        // Passes a failure on.
        bool IsDone(std::shared_future<void> const& done)
        {
            if (done.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
            {
                return false;
            }
            done.get();
            return true;
        }

        // A second start ends a search that runs. If it has just ended by itself, it begins anew and takes a third.
        void Stop(Vorlink& vorlink)
        {
            if (vorlink.StartIosWatcher(OnDevice))
            {
                vorlink.StartIosWatcher(OnDevice);
            }
        }

        SearchEnd Watch(std::shared_future<void> const& started, SearchLog const& log, Interruption const& interruption,
                        std::chrono::seconds limit, NameCallback const& takeName, ElapsedCallback const& progress)
        {
            auto const start = Clock::now();
            bool enough = false;
            bool logIsTrue = true;
            while (!interruption.Requested())
            {
                auto const elapsed = std::chrono::floor<std::chrono::seconds>(Clock::now() - start);
                progress(elapsed);
                bool const endIsLogged = log.HoldsEnd();
                auto const names = TakeNames();
                for (auto const& name : names)
                {
                    enough = enough || !takeName(name);
                    logIsTrue = logIsTrue && !SearchLog::IsEndForgedBy(name);
                }
                bool const isStarted = IsDone(started); // until then the library must not be called again
                if (isStarted && enough)
                {
                    return SearchEnd::Enough;
                }
                // A name is logged just before it is reported: a forger is known when no more names come.
                bool const hasEnded = (endIsLogged && logIsTrue && names.empty()) || elapsed >= longestSearch;
                if (isStarted && hasEnded)
                {
                    return SearchEnd::Complete;
                }
                if (elapsed >= limit)
                {
                    return SearchEnd::TimeLimit;
                }
            }
            return SearchEnd::Interrupted;
        }
    } // namespace

    SearchResult SearchPhones(VorlinkFactory factory, Request const& request, NameCallback const& takeName,
                              ElapsedCallback const& progress)
    {
        // Never released: the library may still be at work for the object when the process ends.
        Vorlink* const vorlink = factory().release();
        Interruption const interruption;
        SearchLog const log(*vorlink, request.log);
        auto const started = Begin([vorlink] { vorlink->StartIosWatcher(OnDevice); });
        try
        {
            auto const end = Watch(started, log, interruption, request.timeout, takeName, progress);
            bool const cutShort = end == SearchEnd::TimeLimit || end == SearchEnd::Interrupted;
            if (cutShort && IsDone(started))
            {
                Begin([vorlink] { Stop(*vorlink); }).wait_for(std::chrono::seconds(2));
            }
            return end;
        }
        catch (...)
        {
            return Failure{DescribeCurrentException()};
        }
    }
} // namespace host
