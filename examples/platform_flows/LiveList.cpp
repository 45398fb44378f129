// Keeps a list of devices up to date while a watcher searches, and shows it when the search is complete. Then the
// watcher is stopped, and started again, as often as the user wants.
// Usage: flow_live_list [ROUNDS]
#include "Common.h"

#include <algorithm>
#include <cwchar>
#include <mutex>
#include <vector>

// Handlers run on threads of the platform, and one may still be on its way out when the watcher has stopped. So what
// they use lives as long as the process.
static std::mutex mutex;
static std::vector<DeviceInformation> devices;
static HANDLE const searched = CreateEventW(nullptr, FALSE, FALSE, nullptr);
static HANDLE const stopped = CreateEventW(nullptr, FALSE, FALSE, nullptr);

static std::vector<DeviceInformation>::iterator Find(hstring const& id)
{
    return std::find_if(devices.begin(), devices.end(),
                        [&](DeviceInformation const& device) { return device.Id() == id; });
}

static void OnAdded(DeviceWatcher const&, DeviceInformation const& device)
{
    std::lock_guard const lock(mutex);
    if (Find(device.Id()) == devices.end()) // watchers have been seen to report a device twice
    {
        devices.push_back(device);
        Say("Added " + Text(device));
    }
}

static void OnUpdated(DeviceWatcher const&, DeviceInformationUpdate const& update)
{
    std::lock_guard const lock(mutex);
    if (auto const found = Find(update.Id()); found != devices.end())
    {
        auto const before = Text(*found);
        found->Update(update);
        Say("Updated " + before + " -> " + Text(*found));
    }
}

static void OnRemoved(DeviceWatcher const&, DeviceInformationUpdate const& update)
{
    std::lock_guard const lock(mutex);
    if (auto const found = Find(update.Id()); found != devices.end())
    {
        Say("Removed " + Text(*found));
        devices.erase(found);
    }
}

static void ShowList()
{
    std::lock_guard const lock(mutex);
    Say("List:");
    for (auto const& device : devices)
    {
        Say("  " + Text(device) + (device.Pairing().IsPaired() ? ", paired" : ""));
    }
    devices.clear();
}

extern "C" int wmain(int argc, wchar_t** argv)
{
    return Run([&] {
        auto const watcher =
            DeviceInformation::CreateWatcher(classicOrLe, nullptr, DeviceInformationKind::AssociationEndpoint);
        // All three, for without one of them nothing is reported once the first search is complete.
        auto const added = watcher.Added(winrt::auto_revoke, OnAdded);
        auto const updated = watcher.Updated(winrt::auto_revoke, OnUpdated);
        auto const removed = watcher.Removed(winrt::auto_revoke, OnRemoved);
        auto const completed = watcher.EnumerationCompleted(winrt::auto_revoke, [](auto&&, auto&&) {
            Say("Completed");
            SetEvent(searched);
        });
        auto const ended = watcher.Stopped(winrt::auto_revoke, [](DeviceWatcher const& sender, auto&&) {
            bool const aborted = sender.Status() == DeviceWatcherStatus::Aborted; // the radio was switched off
            Say(aborted ? "Aborted" : "Stopped");
            SetEvent(aborted ? searched : stopped);
        });
        for (long rounds = argc > 1 ? std::wcstol(argv[1], nullptr, 10) : 1; rounds > 0; --rounds)
        {
            Say("Start");
            watcher.Start();
            WaitForSingleObject(searched, INFINITE);
            ShowList();
            if (watcher.Status() == DeviceWatcherStatus::Aborted)
            {
                return;
            }
            watcher.Stop();
            WaitForSingleObject(stopped, INFINITE);
        }
    });
}
