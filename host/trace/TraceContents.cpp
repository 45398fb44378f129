#include "host/trace/TraceContents.h"

#include "host/Json.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <tuple>
#include <utility>

namespace host
{
    namespace
    {
        using Parsed = nlohmann::json;

        // In a form "d" stands for a digit.
        bool HasForm(std::string_view text, std::string_view form)
        {
            return std::ranges::equal(text, form, [](char letter, char wanted) {
                return wanted == 'd' ? letter >= '0' && letter <= '9' : letter == wanted;
            });
        }

        int NumberAt(std::string_view text, std::size_t at, std::size_t digits)
        {
            int number = 0;
            for (char const digit : text.substr(at, digits))
            {
                number = number * 10 + (digit - '0');
            }
            return number;
        }

        std::optional<std::int64_t> Microseconds(std::string_view local, std::string_view utc)
        {
            using namespace std::chrono;
            if (!HasForm(local, "dddd-dd-dd dd:dd:dd ddd") || !HasForm(utc, "dddd-dd-ddTdd:dd:dd.ddddddZ"))
            {
                return std::nullopt;
            }
            auto const at = [&](std::size_t place) { return NumberAt(local, place, 2); };
            auto const date =
                year(NumberAt(local, 0, 4)) / month(static_cast<unsigned>(at(5))) / day(static_cast<unsigned>(at(8)));
            int const fraction = NumberAt(utc, 20, 6);
            if (!date.ok() || at(11) > 23 || at(14) > 59 || at(17) > 60 || fraction / 1000 != NumberAt(local, 20, 3))
            {
                return std::nullopt;
            }
            auto const time = sys_days(date).time_since_epoch() + hours(at(11)) + minutes(at(14)) + seconds(at(17)) +
                              microseconds(fraction);
            return duration_cast<microseconds>(time).count();
        }

        std::optional<std::string> TextIn(Parsed const& object, char const* key)
        {
            auto const field = object.find(key);
            return field == object.end() || !field->is_string() ? std::optional<std::string>()
                                                                : field->get<std::string>();
        }

        template <typename Number>
        std::optional<Number> NumberIn(Parsed const& object, char const* key)
        {
            auto const field = object.find(key);
            return field == object.end() || !field->is_number_unsigned() ? std::optional<Number>()
                                                                         : field->get<Number>();
        }
    } // namespace

    bool PlatformLine::Failed() const
    {
        return code && code->size() == 10 && code->at(2) >= '8'; // 0x80004005
    }

    std::optional<PlatformLine> ReadPlatformLine(std::string_view text)
    {
        auto const object = Parsed::parse(text, nullptr, false);
        if (!object.is_object())
        {
            return std::nullopt;
        }
        auto const time = TextIn(object, "time");
        auto const utc = TextIn(object, "utc");
        auto const process = NumberIn<std::uint32_t>(object, "process");
        auto const number = NumberIn<std::uint64_t>(object, "number");
        auto const thread = NumberIn<std::uint32_t>(object, "thread");
        auto const kind = TextIn(object, "kind");
        auto const name = TextIn(object, "name");
        if (!time || !utc || !process || !number || !thread || !kind || !name || (kind != "call" && kind != "event"))
        {
            return std::nullopt;
        }
        auto const us = Microseconds(*time, *utc);
        if (!us)
        {
            return std::nullopt;
        }
        return PlatformLine{*us,
                            *time,
                            *utc,
                            *process,
                            *number,
                            *thread,
                            kind == "event",
                            *name,
                            TextIn(object, "object"),
                            TextIn(object, "arguments").value_or(""),
                            TextIn(object, "result"),
                            TextIn(object, "hresult"),
                            NumberIn<std::int64_t>(object, "us")};
    }

    TraceContents::TraceContents(std::string text, Progress const& progress)
        : m_text(std::move(text))
    {
        constexpr std::size_t linesBetweenCalls = 1024;
        std::set<std::uint32_t> processes;
        std::string_view const all(m_text);
        std::size_t count = 0;
        for (std::size_t begin = 0; begin < all.size();)
        {
            auto const end = std::min(all.find('\n', begin), all.size());
            ++count;
            if (auto const line = ReadPlatformLine(all.substr(begin, end - begin)))
            {
                m_lines.push_back(
                    {line->us, line->number, begin, static_cast<std::uint32_t>(end - begin), line->process});
                m_failures += line->Failed();
                processes.insert(line->process);
            }
            else
            {
                m_garbage.push_back(count);
            }
            begin = end + 1;
            if (count % linesBetweenCalls == 0)
            {
                progress(end);
            }
        }
        m_processes = processes.size();
        std::ranges::stable_sort(m_lines, {},
                                 [](Place const& line) { return std::tuple(line.us, line.process, line.number); });
    }

    PlatformLine TraceContents::Read(std::size_t line) const
    {
        auto const& place = m_lines.at(line);
        return ReadPlatformLine(std::string_view(m_text).substr(place.offset, place.size)).value();
    }

    std::vector<Moment> MergeByTime(TraceContents const& trace, LogContents const& log)
    {
        constexpr std::int64_t margin = 10'000'000;
        std::vector<Moment> moments;
        if (trace.Size() == 0)
        {
            return moments;
        }
        auto const first = trace.MicrosecondsOf(0) - margin;
        auto const last = trace.MicrosecondsOf(trace.Size() - 1) + margin;
        // The records come first, and keep their place among what has the same time.
        for (std::size_t at = 0; at < log.Size(); ++at)
        {
            auto const record = log.Read(at);
            auto const us = record.milliseconds * 1000;
            if (!record.time.empty() && us >= first && us <= last)
            {
                moments.push_back({us, static_cast<std::uint32_t>(at), true});
            }
        }
        for (std::size_t at = 0; at < trace.Size(); ++at)
        {
            moments.push_back({trace.MicrosecondsOf(at), static_cast<std::uint32_t>(at), false});
        }
        std::ranges::stable_sort(moments, {}, &Moment::us);
        return moments;
    }
} // namespace host
