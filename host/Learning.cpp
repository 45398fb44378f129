#include "host/Learning.h"

#include "host/DataFile.h"
#include "host/Evidence.h"
#include "host/ExitCode.h"
#include "host/Operation.h"
#include "host/PhoneSearch.h"
#include "host/Text.h"

#include <chrono>
#include <exception>
#include <thread>
#include <vector>

namespace host
{
    namespace
    {
        enum class ReaderEnd
        {
            ListingRead,
            NoListing,
            LateListing, // it came when the reader had already looked
            Interrupted,
        };

        // The reader looks at the listing 3.7 s after its start, and deletes it as the last thing that it does. On a
        // busy machine all that takes longer.
        constexpr std::chrono::seconds longest{9};

        // By the listing alone: what the log says a device's name may have written.
        ReaderEnd WaitForReader(Session const& session, Interruption const& interruption, Progress& progress)
        {
            auto const start = Clock::now();
            bool wasThere = false;
            while (Clock::now() < start + longest)
            {
                if (interruption.Requested())
                {
                    return ReaderEnd::Interrupted;
                }
                progress.Show("Learning the device's LE side",
                              std::chrono::floor<std::chrono::seconds>(Clock::now() - start));
                bool const isThere = session.HasListing();
                if (wasThere && !isThere)
                {
                    return ReaderEnd::ListingRead;
                }
                wasThere = isThere;
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            }
            // A listing that is still being written cannot be deleted.
            return session.HasListing() ? ReaderEnd::LateListing : ReaderEnd::NoListing;
        }

        std::string ListOf(std::vector<std::string> const& texts)
        {
            std::string list;
            for (auto const& text : texts)
            {
                list += (list.empty() ? "" : ", ") + Harmless(text);
            }
            return list;
        }

        constexpr char again[] = " To try again, unpair the device and pair it anew.";

        Lesson NothingLearnt(char const* name, std::string const& reason)
        {
            return {name, "Nothing was learnt of an LE side: " + reason + again, {}, Json::object()};
        }

        Lesson DescribeListing(Learning const& learning, std::string const& name, std::string const& address)
        {
            if (learning.listed.empty())
            {
                return NothingLearnt("NoLeDevice", "the system's listing of devices named no LE device in time.");
            }
            if (learning.taken.empty())
            {
                return NothingLearnt("NothingNew", "every LE device of the system's listing is known already (" +
                                                       ListOf(learning.listed) + ").");
            }
            auto const& value = learning.taken.back();
            Lesson lesson{"Learnt",
                          "Learnt: the LE side of " + Quoted(name) + " is " + Harmless(value) + ".",
                          {},
                          Json::object()};
            bool const belongs = IsSameAddress(value, address);
            lesson.facts["value"] = value;
            lesson.facts["belongs"] = belongs;
            if (!belongs)
            {
                lesson.warnings.push_back(
                    "that is not the address of the device that was paired (" + Harmless(address) +
                    "): it may be another device's, and unpairing by this name would end that one's "
                    "bond too.");
            }
            if (learning.taken.size() > 1)
            {
                lesson.name = "SeveralNew";
                lesson.warnings.push_back("the listing had several new LE devices (" + ListOf(learning.taken) +
                                          "), and the library takes the last.");
            }
            return lesson;
        }

        Lesson DescribeReader(ReaderEnd end, Learning const& learning, std::string const& name,
                              std::string const& address)
        {
            switch (end)
            {
            case ReaderEnd::NoListing:
                return NothingLearnt("NoListing",
                                     "the system's listing of devices (pnputil /enum-devices) did not come.");
            case ReaderEnd::LateListing:
                return NothingLearnt("LateListing", "the system's listing of devices came too late for the library.");
            case ReaderEnd::Interrupted:
                return NothingLearnt("Interrupted", "Ctrl+C ended the wait.");
            default:
                return DescribeListing(learning, name, address);
            }
        }

        void Keep(Session& session, std::string const& name, std::string const& value, Lesson& lesson)
        {
            if (!CanKeep(name))
            {
                lesson.warnings.emplace_back("the library's data file cannot keep a name with \"=\" or a line feed: "
                                             "unpairing will not find the LE side.");
                return;
            }
            try
            {
                session.KeepEntry(name, value);
            }
            catch (std::exception const& error)
            {
                lesson.warnings.push_back(
                    std::string("it could not be kept, so unpairing will not find the LE side: ") +
                    Harmless(error.what()) + ".");
            }
        }
    } // namespace

    Lesson Learn(Session& session, std::string const& name, std::string const& address,
                 Interruption const& interruption, Progress& progress)
    {
        auto const before = session.StoredLe(name);
        auto const end = WaitForReader(session, interruption, progress);
        progress.Finish();
        session.Log().Poll();
        auto learning = HasSeenImitation() ? Learning{} : ReadLearning(session.Log().Records());
        // What the library has stored is true, whatever its log says. Until the reader is done it may be storing.
        auto const stored = end == ReaderEnd::ListingRead ? session.StoredLe(name) : before;
        if (CanKeep(name) && stored != before)
        {
            std::erase(learning.taken, stored);
            learning.taken.push_back(stored);
            learning.listed = learning.listed.empty() ? learning.taken : learning.listed;
        }
        auto lesson = DescribeReader(end, learning, name, address);
        if (end == ReaderEnd::ListingRead && !learning.taken.empty())
        {
            Keep(session, name, learning.taken.back(), lesson);
        }
        lesson.facts["exit_code"] =
            static_cast<int>(end == ReaderEnd::Interrupted ? ExitCode::NoAnswer : ExitCode::Done);
        lesson.facts["listed"] = learning.listed;
        return lesson;
    }
} // namespace host
