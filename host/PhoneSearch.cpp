#include "host/PhoneSearch.h"

#include "host/Evidence.h"
#include "host/OwnThread.h"
#include "host/WideText.h"

#include <condition_variable>
#include <future>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace host
{
    namespace
    {
        constexpr std::chrono::seconds libraryLimit{25};

        // The library has ended its search by now, also if the log did not tell.
        constexpr std::chrono::seconds longestSearch{28};

        // The library's callback carries no context, so what it shares with the waiting thread is global.
        struct
        {
            std::mutex mutex;
            std::condition_variable changed;
            std::vector<std::string> names;
            bool imitated = false;
        } shared;

        void OnDevice(wchar_t const* name, std::uint32_t length) noexcept
        {
            std::lock_guard const lock(shared.mutex);
            shared.names.push_back(ToUtf8({name, length}));
            shared.imitated = shared.imitated || ImitatesRecords(shared.names.back());
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
            auto const task = std::make_shared<std::packaged_task<void()>>(std::move(work));
            auto done = task->get_future().share();
            StartOwnThread([task] { (*task)(); });
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

        SearchEnd Watch(std::shared_future<void> const& started, Session& session, Interruption const& interruption,
                        Clock::time_point end, NameCallback const& takeName, ElapsedCallback const& progress)
        {
            auto const start = Clock::now();
            // A limit beside the library's own would be a second end at the same moment: then the library's holds.
            bool const isEarlier = end - start < libraryLimit - std::chrono::seconds(1);
            auto const limit = isEarlier ? end : start + longestSearch;
            bool enough = false;
            bool logIsTrue = true;
            while (!interruption.Requested())
            {
                auto const now = Clock::now();
                progress(std::chrono::floor<std::chrono::seconds>(now - start));
                session.Log().Poll();
                bool const endIsLogged = HasPhoneSearchEnded(session.Log().Records());
                auto const names = TakeNames();
                for (auto const& name : names)
                {
                    enough = enough || !takeName(name);
                    logIsTrue = logIsTrue && !ImitatesRecords(name);
                }
                bool const isStarted = IsDone(started); // until then the library must not be called again
                if (isStarted && enough)
                {
                    return SearchEnd::Enough;
                }
                // A name is logged just before it is reported: a forger is known when no more names come.
                bool const hasEnded = (endIsLogged && logIsTrue && names.empty()) || now - start >= longestSearch;
                if (isStarted && hasEnded)
                {
                    return SearchEnd::Complete;
                }
                if (now >= limit)
                {
                    return SearchEnd::TimeLimit;
                }
            }
            return SearchEnd::Interrupted;
        }
    } // namespace

    SearchEnd SearchPhones(Session& session, Interruption const& interruption, Clock::time_point end,
                           NameCallback const& takeName, ElapsedCallback const& progress)
    {
        auto* const vorlink = &session.Library();
        auto const started = Begin([vorlink] { vorlink->StartIosWatcher(OnDevice); });
        auto const ended = Watch(started, session, interruption, end, takeName, progress);
        bool const cutShort = ended == SearchEnd::TimeLimit || ended == SearchEnd::Interrupted;
        if (cutShort && IsDone(started))
        {
            Begin([vorlink] { Stop(*vorlink); }).wait_for(std::chrono::seconds(2));
        }
        return ended;
    }

    bool HasSeenImitation()
    {
        std::lock_guard const lock(shared.mutex);
        return shared.imitated;
    }
} // namespace host
