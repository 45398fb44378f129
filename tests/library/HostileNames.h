// What a report and the log hold of a hostile name, by rule.
#pragma once

#include "tests/support/Host.h"
#include "tests/support/HostileNames.h"
#include "tests/support/LogFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace test
{
    // Tells of texts of any length no more than where they part.
    inline void ExpectSame(std::string_view actual, std::string_view expected)
    {
        EXPECT_EQ(actual.size(), expected.size());
        auto const [own, other] = std::ranges::mismatch(actual, expected);
        auto const at = static_cast<std::size_t>(own - actual.begin());
        EXPECT_EQ(actual.substr(at, 40), expected.substr(at, 40)) << "from byte " << at << " on";
    }

    // All of its bytes: the name runs through both texts, cut at their end, and what is behind them is zero.
    inline void ExpectReport(PairReport const& report, std::uint64_t address, bool paired, std::string const& name)
    {
        std::string expected(sizeof report, '\0');
        std::memcpy(expected.data(), &address, sizeof address);
        expected[offsetof(PairReport, paired)] = paired ? '\1' : '\0';
        name.copy(expected.data() + offsetof(PairReport, name), sizeof report.name + sizeof report.addressText);
        ExpectSame({reinterpret_cast<char const*>(&report), sizeof report}, expected);
    }

    // What a record shows of a text: what stands before its first zero byte.
    inline std::string Shown(std::string const& text)
    {
        return text.substr(0, text.find('\0'));
    }

    // A text that is a format without arguments.
    inline std::string Printed(std::string text)
    {
        for (auto at = text.find("%%"); at != std::string::npos; at = text.find("%%", at + 1))
        {
            text.erase(at, 1);
        }
        return text;
    }

    // Those in a name as well.
    inline std::string WithoutTimestamps(std::string const& log)
    {
        static std::regex const timestamp(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \d{3}(?=\[File:))");
        return std::regex_replace(log, timestamp, "");
    }

    // The whole log: these records, each cut so that it ends in its line feed at its buffer's end.
    inline void ExpectLog(std::vector<std::string> const& records)
    {
        constexpr std::size_t capacity = 10'240;
        std::string log;
        for (auto const& record : records)
        {
            std::string line = "2000-01-01 00:00:00 000" + record;
            if (line.size() > capacity)
            {
                line.resize(capacity - 1);
                line += '\n';
            }
            log += line;
        }
        ExpectSame(WithoutTimestamps(ReadFile("log.log")), WithoutTimestamps(log));
    }
} // namespace test
