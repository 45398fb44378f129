#include "host/Outcome.h"

#include "host/Text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace host
{
    namespace
    {
        template <std::size_t Size>
        std::string_view FieldText(char const (&field)[Size])
        {
            return {field, static_cast<std::size_t>(std::find(field, field + Size, '\0') - field)};
        }

        bool IsNothingFound(PairReport const& report, std::string_view nameField)
        {
            // A name that fills its field runs on into the address text.
            bool const ranOn = nameField.size() == sizeof report.name;
            return report.paired == 0 && report.address == 0 && (report.addressText[0] == '\0' || ranOn);
        }

        // aa:bb:cc:dd:ee:ff
        std::string WithColons(std::string_view twelveDigits)
        {
            std::string text;
            for (std::size_t at = 0; at < twelveDigits.size(); at += 2)
            {
                text.append(at == 0 ? "" : ":").append(twelveDigits.substr(at, 2));
            }
            return text;
        }

        std::string AddressOf(PairReport const& report)
        {
            std::array<char, 24> digits{};
            std::snprintf(digits.data(), digits.size(), "%012llx", static_cast<unsigned long long>(report.address));
            auto const text = FieldText(report.addressText);
            if (report.paired == 0 && !text.empty() && text.size() <= 12)
            {
                return text.size() == 12 ? WithColons(Harmless(text)) : Harmless(text);
            }
            return WithColons(digits.data());
        }
    } // namespace

    Outcome DescribeReport(PairReport const& report, std::string const& name)
    {
        auto const reportedName = FieldText(report.name);
        if (IsNothingFound(report, reportedName))
        {
            return {
                ExitCode::NotFound,
                "Not found: no Bluetooth device named " + Quoted(name) +
                    ".\nSwitch it on, bring it near, make it discoverable, and write its name exactly as it shows it;\n"
                    "\"vorlinkctl phones\" lists what can be paired."};
        }
        auto const device = Quoted(reportedName) + " (" + AddressOf(report) + ")";
        if (report.paired != 0)
        {
            return {ExitCode::Done, "Paired " + device + "."};
        }
        return {ExitCode::Refused, "Not paired: found " + device +
                                       ", but the platform did not pair it.\nIt may be paired already, out of pairing "
                                       "mode, or ask for a PIN; the log (--log) names the reason."};
    }

    Outcome DescribeFailure(std::string const& failure)
    {
        return {ExitCode::Failed, "The platform failed: " + Harmless(failure) +
                                      "\nCheck that Bluetooth is switched on and working, then try again."};
    }

    Outcome DescribeUnpairing(bool success, std::string const& name)
    {
        if (success)
        {
            return {ExitCode::Done, "Unpaired " + Quoted(name) +
                                        ": its Classic endpoint, and its LE endpoint if the library knew of one."};
        }
        return {ExitCode::Refused, "Not unpaired: found " + Quoted(name) +
                                       ", but the platform did not unpair all of it.\nIt may not have been paired; the "
                                       "log (--log) tells which endpoint refused."};
    }

    Outcome DescribeSilence(std::string const& name)
    {
        return {ExitCode::NotFound,
                "Not found: no Bluetooth Classic device named " + Quoted(name) +
                    " answered.\nSwitch it on, bring it near, and write its name as it shows it; the "
                    "log (--log) tells how far it went."};
    }

    Outcome DescribeInterruption(std::string const& name)
    {
        return {ExitCode::NoAnswer, "Interrupted: " + Quoted(name) + " was not paired."};
    }

    Outcome DescribeNoAnswer(std::string const& name, long long seconds, char const* doing)
    {
        auto const pending =
            doing ? "the " + std::string(doing) + " of " + Quoted(name) : "the search for " + Quoted(name);
        return {ExitCode::NoAnswer, "No answer: " + pending + " did not end within " + std::to_string(seconds) +
                                        " s.\nTry again, with a longer --timeout if the device needs it."};
    }

    Outcome DescribeList(std::size_t count, bool complete)
    {
        std::string const early = complete ? "" : " so far; the search was ended early";
        if (count == 0)
        {
            return {ExitCode::NotFound,
                    "No device found" + early +
                        ".\nSwitch it on, bring it near, and make it discoverable.\nA phone is "
                        "discoverable while it shows its Bluetooth settings.\nA device that is paired "
                        "already is not listed."};
        }
        return {ExitCode::Done, std::to_string(count) + (count == 1 ? " device" : " devices") + " found" + early + "."};
    }
} // namespace host
