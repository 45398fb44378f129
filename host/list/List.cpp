// The subcommand list.
#include "host/Commands.h"
#include "host/Failure.h"
#include "host/Interruption.h"
#include "host/Outcome.h"
#include "host/Progress.h"
#include "host/Report.h"
#include "host/Session.h"
#include "host/Surroundings.h"
#include "host/Terminal.h"
#include "host/Text.h"
#include "host/list/Devices.h"
#include "host/list/LiveLines.h"

#include <algorithm>
#include <chrono>
#include <functional>

namespace host
{
    namespace
    {
        using Clock = std::chrono::steady_clock;
        using std::chrono::seconds;

        struct Options
        {
            OutputOptions output;
            bool classic = false;
            bool le = false;
            bool paired = false;
            bool watch = false;
            int timeoutSeconds = 0; // not given
        };

        std::vector<Selector> SelectorsOf(Options const& options)
        {
            auto const among = options.paired ? Among::Paired : Among::All;
            std::vector<Selector> selectors;
            if (!options.le)
            {
                selectors.push_back({Protocol::Classic, among});
            }
            if (!options.classic)
            {
                selectors.push_back({Protocol::Le, among});
            }
            return selectors;
        }

        Json ToJson(std::optional<int> signal)
        {
            return signal ? Json(*signal) : Json(nullptr);
        }

        Json ToJson(Seen const& endpoint)
        {
            return {{"protocol", TextOf(endpoint.protocol)},
                    {"name", endpoint.name},
                    {"address", endpoint.address},
                    {"paired", endpoint.paired},
                    {"can_pair", endpoint.canPair},
                    {"connected", endpoint.connected},
                    {"present", endpoint.present},
                    {"signal", ToJson(endpoint.signal)},
                    {"id", endpoint.id}};
        }

        Json ToJson(Device const& device)
        {
            auto endpoints = Json::array();
            for (auto const& endpoint : device)
            {
                endpoints.push_back(ToJson(endpoint));
            }
            return {{"event", "device"},
                    {"name", NameOf(device)},
                    {"address", device.front().address},
                    {"paired", IsPaired(device)},
                    {"can_pair", CanPair(device)},
                    {"connected", IsConnected(device)},
                    {"signal", ToJson(SignalOf(device))},
                    {"endpoints", std::move(endpoints)}};
        }

        enum class End
        {
            Complete,
            TimeLimit,
            Interrupted,
        };

        // Takes what has changed, perhaps nothing, many times a second.
        using Taker = std::function<void(std::vector<Sighting> const& sightings, seconds elapsed)>;

        End Look(Surroundings& surroundings, Options const& options, seconds limit, Taker const& take)
        {
            constexpr std::chrono::milliseconds patience{50};
            Interruption const interruption;
            auto const start = Clock::now();
            for (auto elapsed = seconds(0); elapsed < limit;
                 elapsed = std::chrono::floor<seconds>(Clock::now() - start))
            {
                if (interruption.Requested() || IsOutputLost())
                {
                    return End::Interrupted;
                }
                take(surroundings.Take(patience), elapsed);
                if (surroundings.IsComplete() && !options.watch)
                {
                    return End::Complete;
                }
            }
            return End::TimeLimit;
        }

        std::string Counted(std::size_t count)
        {
            return std::to_string(count) + (count == 1 ? " device" : " devices");
        }

        Outcome Describe(std::vector<Device> const& devices, Options const& options, End end, seconds limit)
        {
            constexpr seconds longestSearch{30};
            auto const paired = static_cast<std::size_t>(std::ranges::count_if(devices, IsPaired));
            bool const complete = end == End::Complete;
            Outcome outcome{ExitCode::Done,
                            "Listed",
                            Counted(devices.size()) + ", " + std::to_string(paired) + " paired.",
                            {},
                            {},
                            {{"count", devices.size()}, {"paired_count", paired}, {"complete", complete}}};
            if (devices.empty())
            {
                outcome.code = ExitCode::NotFound;
                outcome.name = "NotFound";
                outcome.text = options.paired ? "No paired device found." : "No device found.";
                outcome.next = options.paired ? "" : "Switch it on, bring it near, and make it discoverable.";
            }
            if (!options.watch && end == End::Interrupted)
            {
                outcome.text += " The search was ended early.";
            }
            if (!options.watch && end == End::TimeLimit)
            {
                outcome.text += " The search was not complete after " + std::to_string(limit.count()) + " s.";
                outcome.next += limit < longestSearch
                                    ? (outcome.next.empty() ? "" : " ") +
                                          std::string("With --timeout 30 it has the time that it may need.")
                                    : "";
            }
            return outcome;
        }

        // A character in a console's last column would begin another line. Who reads a pipe or a file wants all.
        std::size_t RoomForTable()
        {
            return OutputIsConsole() ? OutputColumns() - 1 : 1000;
        }

        void PrintTable(std::vector<Device> const& devices)
        {
            if (devices.empty())
            {
                return;
            }
            auto const table = LayOut(devices, RoomForTable());
            // Wine's console takes the colours for text: lines that have no room for it would break.
            auto const widest = std::ranges::max(table.rows, {}, Columns);
            bool const roomy = Columns(widest) + Coloured(Colour::Good, "").size() <= RoomForTable();
            auto const paint = [roomy](Colour colour, std::string const& line) {
                return (roomy ? Coloured(colour, line) : line) + "\n";
            };
            auto text = paint(Colour::Bold, table.heading);
            for (std::size_t i = 0; i < devices.size(); ++i)
            {
                text += IsPaired(devices[i]) ? paint(Colour::Good, table.rows[i]) : table.rows[i] + "\n";
            }
            Print(text + "\n");
        }

        void PrintDevices(std::vector<Device> const& devices, bool json)
        {
            if (!json)
            {
                return PrintTable(devices);
            }
            for (auto const& device : devices)
            {
                PrintJson(ToJson(device));
            }
        }

        struct Change
        {
            Sighting::Kind kind;
            char const* sign;
            char const* event;
        };

        constexpr Change changes[] = {
            {Sighting::Kind::Added, "+ ", "added"},
            {Sighting::Kind::Updated, "~ ", "updated"},
            {Sighting::Kind::Removed, "- ", "removed"},
        };

        void PrintChange(Sighting const& sighting, bool json)
        {
            auto const& change = *std::ranges::find(changes, sighting.kind, &Change::kind);
            if (json)
            {
                Json object = {{"event", change.event}};
                object.update(ToJson(sighting.device));
                return PrintJson(object);
            }
            Print(change.sign + LineOf(sighting.device) + "\n");
        }

        // The table, drawn anew where it stands when something has changed, and its clock.
        class LiveTable
        {
        public:
            void Show(std::vector<Seen> const& endpoints, seconds elapsed)
            {
                constexpr std::chrono::milliseconds pause{250};
                auto const now = Clock::now();
                if (now < m_next || (endpoints == m_endpoints && elapsed == m_elapsed))
                {
                    return;
                }
                m_next = now + pause;
                m_endpoints = endpoints;
                m_elapsed = elapsed;
                auto const devices = ToDevices(endpoints);
                auto const table = LayOut(devices, RoomForTable());
                std::vector<std::string> lines = {Counted(devices.size()) + " after " +
                                                      std::to_string(elapsed.count()) + " s; Ctrl+C ends",
                                                  table.heading};
                lines.insert(lines.end(), table.rows.begin(), table.rows.end());
                m_lines.Show(std::move(lines));
            }

            void Clear()
            {
                m_lines.Show({});
            }

        private:
            LiveLines m_lines;
            std::vector<Seen> m_endpoints;
            seconds m_elapsed{-1};
            Clock::time_point m_next;
        };

        Outcome ListDevices(Options const& options)
        {
            auto const limit = options.timeoutSeconds != 0 ? seconds(options.timeoutSeconds)
                               : options.watch             ? seconds::max()
                                                           : seconds(10);
            bool const json = options.output.json;
            bool const live = options.watch && !json && OutputIsConsole();
            Progress progress("Looking for Bluetooth devices", options.output.quiet || live);
            LiveTable table;
            Surroundings surroundings(SelectorsOf(options));
            auto const end =
                Look(surroundings, options, limit, [&](std::vector<Sighting> const& sightings, seconds elapsed) {
                    if (live)
                    {
                        return table.Show(surroundings.All(), elapsed);
                    }
                    if (options.watch && !sightings.empty())
                    {
                        progress.Finish();
                        std::ranges::for_each(sightings, [json](auto const& each) { PrintChange(each, json); });
                    }
                    auto const count = ToDevices(surroundings.All()).size();
                    progress.Show("Looking around, " + Counted(count), elapsed);
                });
            progress.Finish();
            auto const devices = ToDevices(surroundings.All());
            if (live)
            {
                table.Clear();
            }
            if (live || !options.watch)
            {
                PrintDevices(devices, json);
            }
            return Describe(devices, options, end, limit);
        }

        ExitCode RunList(Options const& options)
        {
            Outcome outcome;
            try
            {
                outcome = ListDevices(options);
            }
            catch (...)
            {
                outcome = DescribeFailure(DescribeCurrentException(), IsSimulated());
            }
            return PrintOutcome(outcome, "list", options.output);
        }
    } // namespace

    void AddList(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(app, chosen, "list",
                                                    "Lists the Bluetooth devices that are around or paired", RunList);
        auto& options = command.options;
        auto* const classic = command.app.add_flag("--classic", options.classic, "Over Bluetooth Classic alone");
        command.app.add_flag("--le", options.le, "Over Bluetooth LE alone")->excludes(classic);
        command.app.add_flag("--paired", options.paired, "Only what is paired");
        command.app.add_flag("--watch", options.watch,
                             "Go on, and show what changes: as a table on a console, as lines elsewhere");
        AddSeconds(command.app, "--timeout", options.timeoutSeconds,
                   "Seconds to look at most; 10 unless given, without a limit with --watch");
        SetFooter(
            command.app, {"list", "list --paired", "list --le --watch"},
            "A device of both protocols is one line. A search that is complete ends by itself; Ctrl+C ends it early.\n"
            "With --watch, \"+\" is what comes, \"~\" what changes and \"-\" what goes, each protocol by itself.");
    }
} // namespace host
