// The binary contract: which operation stands in which slot.
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"

#include <gmock/gmock.h>

namespace test
{
    // The contract in a host's own words, as it was compiled long ago. Outside the unnamed namespace, lest the
    // compiler conclude that nothing implements it.
    struct Slots
    {
        virtual bool Slot0() = 0;
        virtual bool Slot1() = 0;
        virtual void Slot2(bool) = 0;
        virtual void Slot3(std::string, PairResultCallback) = 0;
        virtual void Slot4(std::string, UnpairResultCallback) = 0;
        virtual bool Slot5(IosDeviceCallback) = 0;
        virtual void Slot6(std::string, PairResultCallback) = 0;
    };
} // namespace test

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    // An implementation that says which of its operations was called.
    struct Recorder final : Vorlink
    {
        ~Recorder()
        {
            calls.emplace_back("the destructor");
        }
        bool Initialize() override
        {
            calls.emplace_back("Initialize");
            return false;
        }
        bool Uninitialize() override
        {
            calls.emplace_back("Uninitialize");
            return true;
        }
        void SetLogEnabled(bool enabled) override
        {
            calls.push_back(enabled ? "SetLogEnabled true" : "SetLogEnabled false");
        }
        void PairedDevice(std::string name, PairResultCallback) override
        {
            calls.push_back("PairedDevice " + name);
        }
        void UnpairedCurrent(std::string name, UnpairResultCallback) override
        {
            calls.push_back("UnpairedCurrent " + name);
        }
        bool StartIosWatcher(IosDeviceCallback) override
        {
            calls.emplace_back("StartIosWatcher");
            return true;
        }
        void IosPairedDevicce(std::string name, PairResultCallback) override
        {
            calls.push_back("IosPairedDevicce " + name);
        }

        static inline std::vector<std::string> calls;
    };

    std::unique_ptr<Vorlink> MakeRecorder()
    {
        return std::make_unique<Recorder>();
    }

    // Called through this, as through the library's export, it is no object that the compiler knows.
    std::unique_ptr<Vorlink> (*const volatile factory)() = MakeRecorder;

    Slots& AsSlots(Vorlink& vorlink)
    {
        return reinterpret_cast<Slots&>(vorlink);
    }
} // namespace

TEST(Slots, HoldTheSevenOperationsInTheirOrder)
{
    auto const recorder = factory();
    auto& slots = AsSlots(*recorder);
    EXPECT_FALSE(slots.Slot0());
    EXPECT_TRUE(slots.Slot1());
    slots.Slot2(true);
    slots.Slot3("three", nullptr);
    slots.Slot4("four", nullptr);
    EXPECT_TRUE(slots.Slot5(nullptr));
    slots.Slot6("six", nullptr);
    EXPECT_THAT(Recorder::calls, ElementsAre("Initialize", "Uninitialize", "SetLogEnabled true", "PairedDevice three",
                                             "UnpairedCurrent four", "StartIosWatcher", "IosPairedDevicce six"));
}

TEST(Slots, HoldNoDestructorForTheReleaseToRun)
{
    Recorder::calls.clear();
    factory().reset();
    EXPECT_THAT(Recorder::calls, IsEmpty());
}

TEST(Slots, OfTheLibraryAreCalledAsTheHostKnowsThem)
{
    Load(prompt);
    auto const vorlink = MakeVorlink();
    auto& slots = AsSlots(*vorlink);
    slots.Slot2(true);
    slots.Slot3("Nobody", Host::Callback);
    EXPECT_EQ(Host::Count(), 1u);
    EXPECT_THAT(Log(), SizeIs(3));
}
