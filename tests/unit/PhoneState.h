// The phone watcher's state, as tests make and read it.
#pragma once

#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "tests/support/CodeOf.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Host.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Phones.h"

#include <memory>
#include <string>
#include <vector>

namespace test
{
    inline constexpr char phoneAddress[] = "a4:c1:38:5e:22:0f";

    inline void StartWatching(std::string const& scenario)
    {
        Load(scenario);
        vorlink::Library().logEnabled = true;
        EXPECT_TRUE(vorlink::SubVorlink().StartIosWatcher(Phones::Callback));
        ASSERT_TRUE(WaitIdle());
    }

    inline std::int32_t CodeOfStart()
    {
        return CodeOf([] { vorlink::SubVorlink().StartIosWatcher(Phones::Callback); });
    }

    inline std::vector<std::wstring> Kept()
    {
        std::vector<std::wstring> names;
        auto const& list = vorlink::Library().IosDeviceList;
        for (std::uint32_t i = 0; i < list.Size(); ++i)
        {
            names.emplace_back(list.GetAt(i).Name());
        }
        return names;
    }

    // Which of the slots hold a registration: Added, Updated, Removed, EnumerationCompleted, Stopped.
    inline std::string Registrations()
    {
        auto const& library = vorlink::Library();
        std::string slots;
        slots += library.iosAdded ? 'A' : '-';
        slots += library.iosUpdated ? 'U' : '-';
        slots += library.iosRemoved ? 'R' : '-';
        slots += library.iosEnumerationCompleted ? 'E' : '-';
        slots += library.iosStopped ? 'S' : '-';
        return slots;
    }

    // The platform's objects of one device, to hand to a handler.
    inline std::unique_ptr<Watcher> WatcherOver(std::string const& name, std::string const& rest = "")
    {
        Load(patient + Device(name, phoneAddress, rest));
        vorlink::Library().iosDeviceCallback = Phones::Callback;
        vorlink::Library().logEnabled = true;
        return std::make_unique<Watcher>();
    }
} // namespace test
