// A host whose user picks a phone: lists what the watcher reports, reads a number, and pairs. With a name as its
// argument it asks nobody.
// Usage: phone_picker [NAME]
#include <vorlink/Vorlink.h>

#include <windows.h>

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

static std::mutex mutex; // phones are reported on threads of the platform, perhaps on several at a time
static std::vector<std::string> phones;
static std::promise<PairReport> answer;

static std::string Utf8(wchar_t const* text, std::uint32_t length)
{
    int const units = static_cast<int>(length);
    std::string result(3 * static_cast<std::size_t>(length), '\0');
    int const bytes = static_cast<int>(result.size());
    int const size = WideCharToMultiByte(CP_UTF8, 0, text, units, result.data(), bytes, nullptr, nullptr);
    result.resize(static_cast<std::size_t>(size));
    return result;
}

static void OnPhone(wchar_t const* name, std::uint32_t length)
{
    std::lock_guard const lock(mutex);
    phones.push_back(Utf8(name, length));
    std::printf("%2zu  %s\n", phones.size(), phones.back().c_str());
    std::fflush(stdout);
}

static void OnPaired(PairReport report)
{
    answer.set_value(report);
}

// Empty when the user gives up.
static std::string Pick()
{
    for (char line[16]; std::fgets(line, sizeof line, stdin);)
    {
        std::size_t const number = std::strtoul(line, nullptr, 10);
        std::lock_guard const lock(mutex);
        if (number > 0 && number <= phones.size())
        {
            return phones[number - 1];
        }
        std::puts("A number from the list, please.");
        std::fflush(stdout);
    }
    return {};
}

// Tries again while nobody has the name: the phone may come later, and is found a moment after it was reported. The
// watcher runs for 25 seconds at most, so nobody comes after that.
static char const* Pair(Vorlink& vorlink, std::string const& name)
{
    for (auto const end = std::chrono::steady_clock::now() + 26s; std::chrono::steady_clock::now() < end;)
    {
        std::this_thread::sleep_for(100ms);
        answer = {};
        try
        {
            vorlink.IosPairedDevicce(name, OnPaired);
        }
        catch (...) // a device left at this very moment: the next call gets over it
        {
            continue;
        }
        auto report = answer.get_future();
        if (report.wait_for(60s) != std::future_status::ready)
        {
            return "no answer"; // of some outcomes the library tells nobody
        }
        if (PairReport const outcome = report.get(); outcome.address != 0)
        {
            return outcome.paired ? "paired" : "not paired";
        }
    }
    return "not found";
}

int main(int argc, char** argv)
{
    SetConsoleOutputCP(CP_UTF8);
    Vorlink* const vorlink = getVorlinkPtr().release(); // kept to the end: the watcher may still be at work
    vorlink->Initialize();
    vorlink->StartIosWatcher(OnPhone);
    std::string const name = argc > 1 ? argv[1] : Pick();
    if (name.empty())
    {
        return 1;
    }
    std::printf("%s: %s\n", name.c_str(), Pair(*vorlink, name));
}
