#include "simulator/trace/TraceLine.h"

#include "simulator/trace/Texts.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace simulator
{
    namespace
    {
        using namespace std::chrono;

        // How many bytes the character takes that a text begins with; 0 where that is none.
        std::size_t Utf8Length(std::string_view text)
        {
            struct Form
            {
                unsigned char first, last;    // of the lead byte
                unsigned char second, beyond; // the limits of the byte behind it
                std::size_t length;
            };
            constexpr Form forms[] = {
                {0x00, 0x7F, 0x00, 0xFF, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
                {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
                {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
            };
            auto const at = [&](std::size_t place) { return static_cast<unsigned char>(text[place]); };
            for (auto const& form : forms)
            {
                if (at(0) < form.first || at(0) > form.last)
                {
                    continue;
                }
                bool fits = text.size() >= form.length;
                for (std::size_t i = 1; fits && i < form.length; ++i)
                {
                    fits = i == 1 ? at(i) >= form.second && at(i) <= form.beyond : (at(i) & 0xC0) == 0x80;
                }
                return fits ? form.length : 0;
            }
            return 0;
        }

        // Local time to the millisecond, to the letter as the library's log has it, and the same moment as UTC.
        std::string JsonTimes(system_clock::time_point time)
        {
            auto const moment = floor<microseconds>(time.time_since_epoch());
            std::time_t const whole = floor<seconds>(moment).count();
            auto const fraction = static_cast<int>((moment - seconds(whole)).count());
            std::tm local{};
            std::tm utc{};
            if (auto const* const found = std::localtime(&whole)) // a buffer of the thread's own on Windows
            {
                local = *found;
            }
            if (auto const* const found = std::gmtime(&whole))
            {
                utc = *found;
            }
            char text[160];
            std::snprintf(text, sizeof text,
                          R"("time":"%d-%02d-%02d %02d:%02d:%02d %03d","utc":"%d-%02d-%02dT%02d:%02d:%02d.%06dZ")",
                          local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                          local.tm_sec, fraction / 1000, utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour,
                          utc.tm_min, utc.tm_sec, fraction);
            return text;
        }

        std::string OneLine(std::string text)
        {
            std::replace(text.begin(), text.end(), '\n', ' ');
            return text;
        }
    } // namespace

    std::string TextOf(TraceLine const& line)
    {
        auto text = std::to_string(line.thread).append(line.isEvent ? " ! " : " ").append(line.name);
        text.append("(").append(line.arguments).append(")");
        auto const result = line.code && FAILED(*line.code) ? CodeText(*line.code) : line.result;
        return OneLine(text.append(result.empty() ? "" : " -> ").append(result));
    }

    std::string JsonText(std::string_view text)
    {
        std::string json = "\"";
        while (!text.empty())
        {
            auto const length = Utf8Length(text);
            auto const first = static_cast<unsigned char>(text.front());
            if (length == 0)
            {
                json += "\\ufffd";
            }
            else if (first < 0x20 || first == 0x7F)
            {
                char escape[8];
                std::snprintf(escape, sizeof escape, "\\u%04x", first);
                json += escape;
            }
            else
            {
                json.append(first == '"' || first == '\\' ? "\\" : "").append(text.substr(0, length));
            }
            text.remove_prefix(std::max<std::size_t>(length, 1));
        }
        return json + "\"";
    }

    std::string JsonOf(TraceLine const& line)
    {
        // What is called names itself first; a text is no name of an object.
        std::string_view const arguments = line.arguments;
        auto const comma = arguments.find(", ");
        bool const hasObject = !arguments.empty() && arguments.front() != '"';
        auto const object = hasObject ? arguments.substr(0, comma) : std::string_view();
        auto const rest = !hasObject                        ? arguments
                          : comma == std::string_view::npos ? std::string_view()
                                                            : arguments.substr(comma + 2);
        auto json = "{" + JsonTimes(line.time);
        json += ",\"process\":" + std::to_string(GetCurrentProcessId());
        json += ",\"number\":" + std::to_string(line.number);
        json += ",\"thread\":" + std::to_string(line.thread);
        json += line.isEvent ? ",\"kind\":\"event\"" : ",\"kind\":\"call\"";
        json += ",\"name\":" + JsonText(line.name);
        json += ",\"object\":" + (hasObject ? JsonText(object) : "null");
        json += ",\"arguments\":" + JsonText(rest);
        json += ",\"result\":" + (line.result.empty() ? "null" : JsonText(line.result));
        json += ",\"hresult\":" + (line.code ? JsonText(CodeText(*line.code)) : "null");
        json += ",\"us\":" + (line.code && !line.isEvent ? std::to_string(line.took.count()) : "null");
        return json + "}";
    }
} // namespace simulator
