// Devices that move about by themselves, at random from a seed.
#pragma once

#include "tests/library/Stress.h"
#include "tests/support/Neighbourhood.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <random>
#include <string>
#include <thread>

namespace test
{
    class Dice
    {
    public:
        explicit Dice(unsigned seed)
            : m_random(seed)
        {
        }

        std::size_t Below(std::size_t count)
        {
            return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random);
        }

        template <typename Range>
        void Shuffle(Range& range)
        {
            std::ranges::shuffle(range, m_random);
        }

    private:
        std::mt19937 m_random;
    };

    // Devices that come, change, are reported again and go, by a thread of their own.
    class Movement
    {
    public:
        static constexpr std::size_t size = 6;

        explicit Movement(unsigned seed)
            : m_dice(seed)
            , m_thread([this] { Run(); })
        {
        }

        ~Movement()
        {
            m_isOver = true;
            m_thread.join();
        }

        Movement(Movement const&) = delete;
        Movement& operator=(Movement const&) = delete;

        static std::string NameOf(std::size_t index, bool renamed)
        {
            return (renamed ? "Renamed " : "Phone ") + std::to_string(index);
        }

        static std::string Scenario()
        {
            std::string scenario;
            for (std::size_t index = 0; index < size; ++index)
            {
                scenario += Device(NameOf(index, false), AddressOf(index),
                                   "appears-ms = 'never'\n[device.pairing]\nduration-ms = 5\n");
            }
            return scenario;
        }

    private:
        struct Phone
        {
            bool present = false;
            bool renamed = false;
        };

        Dice m_dice;
        std::array<Phone, size> m_phones;
        std::atomic<bool> m_isOver = false;
        std::thread m_thread; // the last: it uses the others

        static std::string AddressOf(std::size_t index)
        {
            return "a4:c1:38:00:00:0" + std::to_string(index);
        }

        void Run()
        {
            while (!m_isOver)
            {
                failures += Move(m_dice.Below(size)) ? 0 : 1;
                Sleep(static_cast<DWORD>(m_dice.Below(10)));
            }
        }

        bool Move(std::size_t index)
        {
            auto& phone = m_phones[index];
            auto const id = ClassicId(AddressOf(index));
            switch (m_dice.Below(5))
            {
            case 0:
                phone.renamed = !phone.renamed;
                return SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay",
                                             ("\"" + NameOf(index, phone.renamed) + "\"").c_str()) != 0;
            case 1:
                return SimulateDeviceChanges(id.c_str(), "System.Devices.Aep.IsPaired", "false") != 0;
            case 2:
                return !phone.present || SimulateDeviceRepeats(id.c_str()) != 0;
            case 3:
                SimulateEnumerationCompletes();
                return true;
            default:
                phone.present = !phone.present;
                return (phone.present ? SimulateDeviceAppears(id.c_str()) : SimulateDeviceLeaves(id.c_str())) != 0;
            }
        }
    };
} // namespace test
