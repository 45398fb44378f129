#include "host/trace/TraceContents.h"

#include "host/Json.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <set>
#include <tuple>
#include <utility>

namespace host
{
    namespace
    {
        using Parsed = nlohmann::json;

        // "2026-01-02 10:00:00 047", and the digits behind the seconds of "2026-01-02T09:00:00.047123Z"
        std::optional<std::int64_t> Microseconds(std::string const& local, std::string const& utc)
        {
            using namespace std::chrono;
            int years = 0;
            unsigned months = 0;
            unsigned days = 0;
            int hour = 0;
            int minute = 0;
            int second = 0;
            int millisecond = 0;
            int fraction = 0;
            int end = 0;
            bool const fits = std::sscanf(local.c_str(), "%d-%2u-%2u %2d:%2d:%2d %3d%n", &years, &months, &days, &hour,
                                          &minute, &second, &millisecond, &end) == 7 &&
                              static_cast<std::size_t>(end) == local.size();
            auto const point = utc.find('.');
            auto const date = year(years) / month(months) / day(days);
            if (!fits || !date.ok() || point == std::string::npos ||
                std::sscanf(utc.c_str() + point, ".%6dZ", &fraction) != 1 || fraction / 1000 != millisecond)
            {
                return std::nullopt;
            }
            auto const time = sys_days(date).time_since_epoch() + hours(hour) + minutes(minute) + seconds(second) +
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
