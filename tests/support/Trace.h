// What the library asked of the platform, as the simulator recorded it.
#pragma once

#include "simulator/VorlinkSimulator.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace test
{
    // The method that the library makes its watchers by.
    inline constexpr char createWatcher[] = "DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties";

    // Names a test after the method that it lets fail.
    inline std::string MethodName(testing::TestParamInfo<char const*> const& test)
    {
        std::string const method = test.param;
        return method.substr(method.rfind('.') + 1);
    }

    struct TraceLine
    {
        unsigned long thread = 0;
        std::string text; // without the thread
    };

    // All of it, each line with its thread.
    inline std::string TraceText()
    {
        constexpr std::size_t reserve = 65536; // for what other threads do meanwhile
        std::string text(SimulatorTrace(nullptr, 0) + reserve, '\0');
        SimulatorTrace(text.data(), text.size());
        text.resize(text.find('\0'));
        return text;
    }

    inline std::vector<TraceLine> TraceLines()
    {
        std::istringstream lines(TraceText());
        std::vector<TraceLine> result;
        for (std::string line; std::getline(lines, line);)
        {
            auto const blank = line.find(' ');
            result.push_back({std::stoul(line.substr(0, blank)), line.substr(blank + 1)});
        }
        return result;
    }

    inline bool IsProjectionsOwn(std::string_view text)
    {
        return text.starts_with("AsyncOperation.") || text.find(".GetActivationFactory(") != std::string_view::npos;
    }

    // The calls and events, in order, whose text begins with one of the prefixes ("DeviceWatcher.",
    // "! DeviceWatcher.Added"); all of them when none is given. How a projection activates a class and asks an
    // operation that it waits for is its own affair: these calls are left out unless asked for.
    inline std::vector<std::string> Trace(std::vector<std::string_view> const& prefixes = {})
    {
        std::vector<std::string> result;
        for (auto const& line : TraceLines())
        {
            bool wanted = prefixes.empty() && !IsProjectionsOwn(line.text);
            for (auto const prefix : prefixes)
            {
                wanted = wanted || line.text.starts_with(prefix);
            }
            if (wanted)
            {
                result.push_back(line.text);
            }
        }
        return result;
    }

    // Lines of the trace without the numbers that the platform gives to registrations.
    inline std::vector<std::string> WithoutTokens(std::vector<std::string> lines)
    {
        static std::regex const added(R"((\.add_\w+\([^)]*\)) -> \d+)");
        static std::regex const removed(R"((\.remove_\w+\([^)]*), \d+\))");
        for (auto& line : lines)
        {
            line = std::regex_replace(line, added, "$1");
            line = std::regex_replace(line, removed, "$1)");
        }
        return lines;
    }
} // namespace test
