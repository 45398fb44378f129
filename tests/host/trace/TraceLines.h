// A trace for a test, line by line.
#pragma once

#include <cstdio>
#include <string>

namespace test
{
    // The end of a line, from its thread on.
    inline std::string CallOf(std::string const& name, std::string const& object, std::string const& arguments = {},
                              std::string const& result = "null", std::string const& code = "0x00000000")
    {
        return R"("thread":36,"kind":"call","name":")" + name + R"(","object":)" + object + R"(,"arguments":")" +
               arguments + R"(","result":)" + result + R"(,"hresult":")" + code + R"(","us":12})";
    }

    inline std::string EventOf(std::string const& name, std::string const& object, std::string const& arguments = {})
    {
        return R"("thread":40,"kind":"event","name":")" + name + R"(","object":)" + object + R"(,"arguments":")" +
               arguments + R"(","result":null,"hresult":null,"us":null})";
    }

    // So many microseconds after ten o'clock, on the day of the log's lines; the zone is an hour east.
    inline std::string TraceLine(int us, int number, std::string const& rest, int process = 32)
    {
        char times[128];
        std::snprintf(times, sizeof times,
                      R"({"time":"2026-01-02 10:%02d:%02d %03d","utc":"2026-01-02T09:%02d:%02d.%06dZ",)",
                      us / 60'000'000, us / 1'000'000 % 60, us / 1000 % 1000, us / 60'000'000, us / 1'000'000 % 60,
                      us % 1'000'000);
        return times + (R"("process":)" + std::to_string(process)) + R"(,"number":)" + std::to_string(number) + "," +
               rest + "\n";
    }
} // namespace test
