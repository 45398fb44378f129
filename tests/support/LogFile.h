// The library's log as a test reads it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace test
{
    inline std::string ReadFile(std::filesystem::path const& path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    inline bool LogExists()
    {
        return std::filesystem::exists("log.log");
    }

    // The log's bytes without the timestamps, a record a string with its line feed. A record begins at a
    // timestamp; everything up to the next one belongs to it.
    inline std::vector<std::string> Log()
    {
        std::string const text = ReadFile("log.log");
        static std::regex const timestamp(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \d{3}(?=\[File:))");
        std::vector<std::string> records;
        std::sregex_token_iterator const begin(text.begin(), text.end(), timestamp, -1);
        for (auto piece = begin; piece != std::sregex_token_iterator(); ++piece)
        {
            if (piece == begin)
            {
                EXPECT_EQ(piece->str(), "") << "the log does not begin with a timestamp";
            }
            else
            {
                records.push_back(piece->str());
            }
        }
        return records;
    }

    // Those records that one function wrote.
    inline std::vector<std::string> LogOf(std::string const& function, std::vector<std::string> records = Log())
    {
        std::erase_if(records, [&](std::string const& record) {
            return record.find("[Function:" + function + "]") == std::string::npos;
        });
        return records;
    }

    // The library's functions, as its records name them.
    inline constexpr char pairByName[] = "SubVorlink::PairedDevice";
    inline constexpr char lookup[] = "SubVorlink::GetDeviceforName";
    inline constexpr char ceremony[] = "SubVorlink::PairingDevice";
    inline constexpr char reader[] = "ReadLine";
    inline constexpr char search[] = "SubVorlink::IosPairedDevicce";
    inline constexpr char classicUnpairing[] = "SubVorlink::UnpairedCurrent";
    inline constexpr char leUnpairing[] = "SubVorlink::UnpairBleDevice";

    // A record as Log() gives it.
    inline std::string Record(int line, std::string const& function, std::string const& message)
    {
        return "[File:SubVorlink][Line:" + std::to_string(line) + "][Function:" + function + "] " + message + "\n";
    }
} // namespace test
