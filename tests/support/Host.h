// A host as the tests play it: the library from outside, and what it reported.
#pragma once

#include "interface/Vorlink.h"
#include "tests/support/Patience.h"

#include <windows.h>

#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

namespace test
{
    // vorlink.dll, loaded once from the program's folder.
    inline HMODULE LibraryModule()
    {
        static HMODULE const module = LoadLibraryW(L"vorlink.dll");
        if (!module)
        {
            throw std::runtime_error("vorlink.dll does not load");
        }
        return module;
    }

    inline std::unique_ptr<Vorlink> MakeVorlink(HMODULE module)
    {
        using Factory = std::unique_ptr<Vorlink> (*)();
        auto const address = GetProcAddress(module, "getVorlinkPtr");
        if (!address)
        {
            throw std::runtime_error("vorlink.dll has no getVorlinkPtr");
        }
        return reinterpret_cast<Factory>(reinterpret_cast<void*>(address))();
    }

    inline std::unique_ptr<Vorlink> MakeVorlink()
    {
        return MakeVorlink(LibraryModule());
    }

    inline std::unique_ptr<Vorlink> MakeLoggingVorlink()
    {
        auto vorlink = MakeVorlink();
        vorlink->SetLogEnabled(true);
        return vorlink;
    }

    // The reports that one callback received. Callbacks are plain functions, so each Slot is a callback.
    template <int Slot>
    class Reports
    {
    public:
        static void Callback(PairReport report)
        {
            std::lock_guard const lock(mutex);
            reports.push_back(report);
            threads.push_back(GetCurrentThreadId());
            arrival.notify_all();
        }

        static bool WaitFor(std::size_t count)
        {
            std::unique_lock lock(mutex);
            return arrival.wait_for(lock, patience, [&] { return reports.size() >= count; });
        }

        static std::size_t Count()
        {
            std::lock_guard const lock(mutex);
            return reports.size();
        }

        static PairReport At(std::size_t index)
        {
            std::lock_guard const lock(mutex);
            return reports.at(index);
        }

        static DWORD ThreadOf(std::size_t index)
        {
            std::lock_guard const lock(mutex);
            return threads.at(index);
        }

    private:
        static inline std::mutex mutex;
        static inline std::condition_variable arrival;
        static inline std::vector<PairReport> reports;
        static inline std::vector<DWORD> threads;
    };

    using Host = Reports<0>;
    using OtherHost = Reports<1>;

    // A field that ends at its first zero byte or at its end.
    template <std::size_t Size>
    std::string Text(char const (&field)[Size])
    {
        auto const* const end = static_cast<char const*>(std::memchr(field, 0, Size));
        return {field, end ? static_cast<std::size_t>(end - field) : Size};
    }
} // namespace test
