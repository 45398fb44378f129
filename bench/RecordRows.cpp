#include "bench/Clients.h"
#include "bench/Comparison.h"
#include "bench/Library.h"
#include "bench/Neighbourhood.h"
#include "bench/Rows.h"
#include "bench/Stamps.h"
#include "log/WriteLog.h"

#include <windows.h>

#include <cstdlib>
#include <string_view>

namespace bench
{
    namespace
    {
        constexpr char logFile[] = "log.log";
        constexpr std::string_view record = "2024-03-07 09:05:02 047[File:SubVorlink][Line:416]"
                                            "[Function:SubVorlink::GetDeviceforName] Device 1234\n";

        void CheckedClose(HANDLE file)
        {
            if (file == INVALID_HANDLE_VALUE || !CloseHandle(file))
            {
                std::abort();
            }
        }

        // What a record asks of the system: the clock, the folder, a look at the file's size, one write at its end.
        void WriteBare()
        {
            FILETIME now;
            GetSystemTimePreciseAsFileTime(&now);
            char folder[MAX_PATH];
            GetCurrentDirectoryA(sizeof folder, folder);
            constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE;
            HANDLE const old = CreateFileA(logFile, GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr);
            SetFilePointer(old, 0, nullptr, FILE_END);
            CheckedClose(old);
            HANDLE const file = CreateFileA(logFile, GENERIC_READ | GENERIC_WRITE, shared, nullptr, OPEN_ALWAYS,
                                            FILE_ATTRIBUTE_NORMAL, nullptr);
            SetFilePointer(file, 0, nullptr, FILE_END);
            DWORD written = 0;
            WriteFile(file, record.data(), static_cast<DWORD>(record.size()), &written, nullptr);
            CheckedClose(file);
        }

        void MeasureRecord(benchmark::State& state)
        {
            DeleteFileA(logFile);
            vorlink::WriteLog(true, "pairing\\SubVorlink", 416, "SubVorlink::GetDeviceforName", "Device 0");
            Compare(
                state, [] { return TimeOf(WriteBare); },
                [] {
                    return TimeOf([] {
                        vorlink::WriteLog(true, "pairing\\SubVorlink", 416, "SubVorlink::GetDeviceforName", "%s",
                                          "Device 1234");
                    });
                });
            DeleteFileA(logFile);
        }

        double Lookup(bool logs, Client const& library, std::int64_t count)
        {
            TheLibrary().SetLogEnabled(logs);
            auto const course = Pair(library, count - 1);
            TheLibrary().SetLogEnabled(false);
            return SecondsBetween(course.begun, course.request);
        }

        void MeasureShare(benchmark::State& state, std::int64_t count)
        {
            (void)TheStamps();
            LoadNeighbourhood(count);
            auto const library = LibraryClient();
            Compare(
                state, [&] { return Lookup(false, library, count); }, [&] { return Lookup(true, library, count); });
            DeleteFileA(logFile);
        }
    } // namespace

    void AddRecords(Plan const& plan)
    {
        plan.Row("log record", 15, MeasureRecord)->Iterations(plan.quick ? 2 : 300);
        auto const count = plan.Sizes(10, 1'000).back();
        plan.Row("logged lookup/" + std::to_string(count), 9,
                 [count](benchmark::State& state) { MeasureShare(state, count); })
            ->Iterations(1);
    }
} // namespace bench
