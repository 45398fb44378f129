// A crowd of phones that comes, changes and goes while the platform tells of several at a time.
#pragma once

#include "tests/library/PhoneHost.h"
#include "tests/library/Stress.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace test
{
    class Crowd
    {
    public:
        static std::string Scenario()
        {
            std::string scenario = patient + "event-threads = 4\n";
            for (int index = 0; index < size; ++index)
            {
                scenario += Device(NameOf(index, false), AddressOf(index), "appears-ms = 'never'");
            }
            return scenario;
        }

        // Some that come, change or go, at once; then waits until the library has heard of it all.
        void Move(int count, int (*random)(int))
        {
            for (int move = 0; move < count; ++move)
            {
                Move(random(size - 1), random(2) == 0);
            }
            EXPECT_TRUE(WaitIdle());
            events += static_cast<int>(Trace({"! DeviceWatcher."}).size());
            SimulatorClearTrace();
        }

        std::vector<std::string> Present() const
        {
            std::vector<std::string> names;
            for (int index = 0; index < size; ++index)
            {
                auto const& phone = phones[static_cast<std::size_t>(index)];
                if (phone.present)
                {
                    names.push_back(NameOf(index, phone.renamed));
                }
            }
            return names;
        }

    private:
        static constexpr int size = 8;

        struct State
        {
            bool present = false;
            bool renamed = false;
        };

        std::array<State, size> phones;

        static std::string NameOf(int index, bool renamed)
        {
            return (renamed ? "Renamed " : "Phone ") + std::to_string(index);
        }

        static std::string AddressOf(int index)
        {
            return "a4:c1:38:00:00:0" + std::to_string(index);
        }

        void Move(int index, bool renames)
        {
            auto& phone = phones[static_cast<std::size_t>(index)];
            auto const id = ClassicId(AddressOf(index));
            if (renames)
            {
                phone.renamed = !phone.renamed;
                auto const name = "\"" + NameOf(index, phone.renamed) + "\"";
                EXPECT_TRUE(SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay", name.c_str()));
            }
            else
            {
                phone.present = !phone.present;
                EXPECT_TRUE(phone.present ? SimulateDeviceAppears(id.c_str()) : SimulateDeviceLeaves(id.c_str()))
                    << SimulatorLastError();
            }
        }
    };
} // namespace test
