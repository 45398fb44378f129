#include "host/Records.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <optional>
#include <system_error>
#include <utility>

namespace host
{
    namespace
    {
        // Takes what a text begins with; whatever does not fit makes it fail for good.
        class Head
        {
        public:
            explicit Head(std::string_view text)
                : m_rest(text)
            {
            }

            void Take(std::string_view expected)
            {
                m_fits = m_fits && m_rest.starts_with(expected);
                m_rest.remove_prefix(m_fits ? expected.size() : 0);
            }

            int TakeNumber(std::size_t leastDigits, std::size_t mostDigits)
            {
                int number = 0;
                auto const* const begin = m_rest.data();
                bool const isSigned = m_rest.starts_with('-');
                auto const [end, error] = std::from_chars(begin, begin + std::min(m_rest.size(), mostDigits), number);
                auto const digits = static_cast<std::size_t>(end - begin);
                m_fits = m_fits && error == std::errc() && digits >= leastDigits && !isSigned;
                m_rest.remove_prefix(m_fits ? digits : 0);
                return number;
            }

            std::string_view TakeUntil(char end)
            {
                auto const at = m_rest.find(end);
                m_fits = m_fits && at != std::string_view::npos;
                auto const taken = m_rest.substr(0, m_fits ? at : 0);
                m_rest.remove_prefix(taken.size());
                return taken;
            }

            bool Fits() const
            {
                return m_fits;
            }

            std::string_view Rest() const
            {
                return m_rest;
            }

        private:
            std::string_view m_rest;
            bool m_fits = true;
        };

        std::optional<Record> BeginRecord(std::string_view line)
        {
            using namespace std::chrono;
            Head head(line);
            int const years = head.TakeNumber(1, 5);
            head.Take("-");
            int const months = head.TakeNumber(2, 2);
            head.Take("-");
            int const days = head.TakeNumber(2, 2);
            head.Take(" ");
            int const hour = head.TakeNumber(2, 2);
            head.Take(":");
            int const minute = head.TakeNumber(2, 2);
            head.Take(":");
            int const second = head.TakeNumber(2, 2);
            head.Take(" ");
            int const millisecond = head.TakeNumber(3, 3);
            auto const time = line.substr(0, line.size() - head.Rest().size());
            head.Take("[File:");
            head.TakeUntil(']');
            head.Take("][Line:");
            int const number = head.TakeNumber(1, 9);
            head.Take("][Function:");
            auto const function = head.TakeUntil(']');
            head.Take("] ");
            auto const date = year(years) / month(static_cast<unsigned>(months)) / day(static_cast<unsigned>(days));
            if (!head.Fits() || !date.ok() || hour > 23 || minute > 59 || second > 60)
            {
                return std::nullopt;
            }
            auto const sinceEpoch = sys_days(date).time_since_epoch() + hours(hour) + minutes(minute) +
                                    seconds(second) + milliseconds(millisecond);
            return Record{std::string(time), duration_cast<milliseconds>(sinceEpoch).count(), number,
                          std::string(function), std::string(head.Rest())};
        }

        using IsTrue = std::function<bool(Record const&)>;

        void TakeLine(std::string_view line, IsTrue const& isTrue, std::vector<Record>& records)
        {
            auto record = BeginRecord(line);
            if (record && (!isTrue || isTrue(*record)))
            {
                records.push_back(std::move(*record));
            }
            else if (records.empty() || records.back().function.empty())
            {
                records.push_back({{}, 0, 0, {}, std::string(line)});
            }
            else
            {
                records.back().message.append("\n").append(line);
            }
        }

        // Takes the whole lines of a text; returns the rest.
        std::string_view TakeLines(std::string_view text, IsTrue const& isTrue, std::vector<Record>& records)
        {
            for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n'))
            {
                TakeLine(text.substr(0, end), isTrue, records);
                text.remove_prefix(end + 1);
            }
            return text;
        }
    } // namespace

    RecordReader::RecordReader(IsTrue isTrue)
        : m_isTrue(std::move(isTrue))
    {
    }

    void RecordReader::Read(std::string_view text)
    {
        auto const end = text.find('\n');
        m_line += text.substr(0, end);
        if (end != std::string_view::npos)
        {
            TakeLine(m_line, m_isTrue, m_records);
            m_line = TakeLines(text.substr(end + 1), m_isTrue, m_records);
        }
    }

    std::vector<Record> ReadRecords(std::string_view text)
    {
        std::vector<Record> records;
        auto const rest = TakeLines(text, {}, records);
        if (!rest.empty())
        {
            TakeLine(rest, {}, records);
        }
        return records;
    }
} // namespace host
