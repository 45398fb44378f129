#include "host/Outcome.h"

#include "host/Meanings.h"
#include "host/Text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <utility>

namespace host
{
    namespace
    {
        template <std::size_t Size>
        std::string_view FieldText(char const (&field)[Size])
        {
            return {field, static_cast<std::size_t>(std::find(field, field + Size, '\0') - field)};
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

        std::string Device(std::string const& name, std::string const& address)
        {
            return Quoted(name) + (address.empty() ? "" : " (" + Harmless(address) + ")");
        }

        Json Facts(std::string const& asked, std::string const& name, std::string const& address)
        {
            Json facts;
            facts["asked"] = asked;
            facts["name"] = name;
            facts["address"] = address;
            return facts;
        }

        // A search by name takes the first device whose name contains it, where it is long.
        void WarnOfOtherName(Outcome& outcome, std::string const& asked, std::string const& name)
        {
            if (name != asked)
            {
                outcome.warnings.push_back("the device is called " + Quoted(name) + ", not " + Quoted(asked) +
                                           ": a name of 14 bytes or more also matches one that contains it.");
            }
        }

        std::string Sentence(std::string_view meaning)
        {
            return std::string(meaning) + ".";
        }

        std::string NewSentence(std::string_view meaning)
        {
            auto sentence = Sentence(meaning);
            sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
            return sentence;
        }

        // "the device takes no more connections (TooManyConnections)."
        std::string NamedSentence(Meaning const& meaning)
        {
            return Sentence(std::string(meaning.meaning) + " (" + std::string(meaning.name) + ")");
        }
        // `meaning`: null where the reason is not known.
        Outcome OfPairing(Meaning const* meaning, std::string const& asked, std::string const& name,
                          std::string const& address)
        {
            auto const device = Device(name, address);
            Outcome outcome{ExitCode::Refused, "Unknown", {}, {}, {}, Facts(asked, name, address)};
            if (!meaning)
            {
                outcome.text = "Not paired: found " + device + ", but the platform did not pair it.";
                outcome.next = "The reason is not known. Try again, and look at the library's log (--log).";
            }
            else
            {
                outcome.code = meaning->code;
                outcome.name = meaning->name;
                outcome.next = meaning->next;
                outcome.text = "Not paired: found " + device + ", but " + NamedSentence(*meaning);
            }
            if (outcome.name == "Paired")
            {
                outcome.text = "Paired " + device + ".";
                outcome.next.clear();
            }
            if (outcome.name == "AlreadyPaired")
            {
                outcome.text = "Already paired: " + device + "; " + Sentence(meaning->meaning);
            }
            WarnOfOtherName(outcome, asked, name);
            return outcome;
        }
    } // namespace

    bool IsNothingFound(PairReport const& report)
    {
        // A name that fills its field runs on into the address text.
        bool const ranOn = FieldText(report.name).size() == sizeof report.name;
        return report.paired == 0 && report.address == 0 && (report.addressText[0] == '\0' || ranOn);
    }

    std::string AddressOf(PairReport const& report)
    {
        std::array<char, 24> digits{};
        std::snprintf(digits.data(), digits.size(), "%012llx", static_cast<unsigned long long>(report.address));
        auto const text = FieldText(report.addressText);
        if (report.paired == 0 && !text.empty() && text.size() <= 12)
        {
            return text.size() == 12 ? WithColons(text) : std::string(text);
        }
        return WithColons(digits.data());
    }

    Outcome DescribePairing(PairReport const& report, std::string const& asked, std::optional<Match> const& match,
                            std::optional<std::string> const& status)
    {
        if (IsNothingFound(report))
        {
            return DescribeSilence("NotFound", asked, std::nullopt);
        }
        // The report is the library's word; the status stands in its log, where a name can stand too.
        bool const isTrue = status && *status != "Paired";
        auto const* const meaning = FindMeaning(Family::Pairing, report.paired != 0 ? "Paired" : isTrue ? *status : "");
        return OfPairing(meaning, asked, match ? match->name : asked, AddressOf(report));
    }

    Outcome DescribeOwnPairing(std::string const& name, std::string const& address, int status)
    {
        auto const found = std::ranges::find_if(Meanings(), [status](Meaning const& meaning) {
            return meaning.family == Family::Pairing && meaning.value == status;
        });
        return OfPairing(found == Meanings().end() ? nullptr : &*found, name, name, address);
    }

    Outcome DescribeUnpairing(bool success, std::string const& asked, std::optional<Match> const& match,
                              LeUnpairing const& le)
    {
        auto const name = match ? match->name : asked;
        auto const address = match ? match->address : "";
        auto const device = Device(name, address);
        bool const classicDone = success || le.side == LeSide::Refused;
        Outcome outcome{ExitCode::Refused, {}, {}, {}, {}, Facts(asked, name, address)};
        if (success)
        {
            outcome.code = ExitCode::Done;
            outcome.name = "Unpaired";
            outcome.text = "Unpaired " + device + ": its Classic side" +
                           (le.side == LeSide::Unpaired ? " and its LE side, " + Harmless(le.text) : "") + ".";
        }
        else if (classicDone)
        {
            outcome.name = "LeRefused";
            outcome.text = "Not unpaired: found " + device +
                           "; the Classic side is unpaired, but the platform refused to "
                           "unpair the LE side, " +
                           Harmless(le.text) + ".";
            outcome.next =
                "Remove it in the system's settings; \"vorlinkctl list --le\" shows whether it is still paired.";
        }
        else if (match && !match->isPaired)
        {
            auto const* const meaning = FindMeaning(Family::Unpairing, "AlreadyUnpaired");
            outcome.name = meaning->name;
            outcome.text = "Not unpaired: found " + device + ", but " + NamedSentence(*meaning);
            outcome.next = meaning->next;
        }
        else
        {
            // The library passes no status on: any of these three.
            outcome.name = "Refused";
            outcome.text = "Not unpaired: found " + device +
                           ", but the platform did not unpair it "
                           "(OperationAlreadyInProgress, AccessDenied or Failed).";
            outcome.next =
                "Close the system's own Bluetooth window, switch Bluetooth off and on and try again; or remove "
                "the device in the system's settings.";
        }
        if (success && le.side == LeSide::NotFound)
        {
            outcome.warnings.push_back("an LE side, " + Harmless(le.text) +
                                       ", is kept for this name, but no such LE device was seen: "
                                       "it may still be paired.");
        }
        if (classicDone)
        {
            outcome.facts["le"] = le.text;
        }
        WarnOfOtherName(outcome, asked, name);
        return outcome;
    }

    Outcome DescribeSilence(std::string_view name, std::string const& asked, std::optional<Match> const& match,
                            std::string const& what, std::string const& next)
    {
        auto const& meaning = *FindMeaning(Family::Silence, name);
        Outcome outcome{meaning.code, std::string(name),
                        {},           next,
                        {},           Facts(asked, match ? match->name : "", match ? match->address : "")};
        if (name == "NotFound")
        {
            outcome.text = what.empty() ? "Not found: no Bluetooth device named " + Quoted(asked) + "." : what;
            outcome.next = meaning.next;
            return outcome;
        }
        char const* const head = name == "Interrupted" ? "Interrupted: "
                                 : name == "LeFailed"  ? "Not unpaired: "
                                                       : "No answer: ";
        outcome.text = head + (what.empty() ? Sentence(meaning.meaning) : what);
        if (next.empty())
        {
            outcome.next = (match ? "Found " + Device(match->name, match->address) + ". " : "") +
                           (what.empty() ? "" : NewSentence(meaning.meaning) + " ") + std::string(meaning.next);
        }
        if (match)
        {
            WarnOfOtherName(outcome, asked, match->name);
        }
        return outcome;
    }

    Outcome DescribeFailure(std::string const& failure, bool simulated)
    {
        struct Hint
        {
            std::string_view code;
            std::string_view text;
        };
        constexpr Hint hints[] = {
            {"0x80040154", "This Windows lacks Windows.Devices.Enumeration (it comes with Windows 10), or the manifest "
                           "beside vorlinkctl.exe names a simulator that is not there."},
            {"0x80004002",
             "Whatever answers for Windows.Devices.Enumeration here is not the real platform, or is too old; "
             "on Wine, run it with the simulator (share/vorlink/simulator.manifest)."},
            {"0x8007007E", "A DLL that the manifest beside vorlinkctl.exe names is missing."},
            {"0x80070005", "Run the program as a user who may use Bluetooth; ask the administrator about a policy."},
        };
        auto const hint = std::ranges::find_if(hints, [&](Hint const& each) { return failure.starts_with(each.code); });
        auto next = hint != std::end(hints) ? std::string(hint->text)
                    : simulated
                        ? "The simulated platform says so: check its scenario with \"vorlinkctl scenario check FILE\"."
                        : "Check that Bluetooth is switched on and working, then try again.";
        return {ExitCode::Failed,
                "Failed",
                "The platform failed: " + Harmless(failure),
                next + " \"vorlinkctl doctor\" looks closer.",
                {},
                Json{{"failure", failure}}};
    }

    Outcome DescribeList(std::size_t count, bool complete)
    {
        std::string const early = complete ? "" : " so far; the search was ended early";
        Json const facts = {{"count", count}, {"complete", complete}};
        if (count == 0)
        {
            return {ExitCode::NotFound,
                    "NotFound",
                    "No device found" + early + ".",
                    "Switch it on, bring it near, and make it discoverable. A phone is discoverable while it shows its "
                    "Bluetooth settings. A device that is paired already is not listed.",
                    {},
                    facts};
        }
        return {ExitCode::Done,
                "Listed",
                std::to_string(count) + (count == 1 ? " device" : " devices") + " found" + early + ".",
                {},
                {},
                facts};
    }

    Outcome DescribeDeclined(std::string const& text, std::string const& next)
    {
        return {ExitCode::Declined, "Declined", text, next, {}, Json::object()};
    }
} // namespace host
