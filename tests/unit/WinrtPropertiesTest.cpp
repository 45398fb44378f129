// A device's properties, as programs read them.
#include "pairing/Enumeration.h"
#include "tests/support/CodeOf.h"
#include "tests/support/Endpoints.h"
#include "tests/support/FakeObject.h"
#include "tests/support/Neighbourhood.h"

#include <gtest/gtest.h>

using namespace test;
using winrt::hstring;
using winrt::unbox_value_or;

namespace
{
    using Object = winrt::Windows::Foundation::IInspectable;
    using Properties = winrt::Windows::Foundation::Collections::IMapView<hstring, Object>;

    constexpr wchar_t name[] = L"System.ItemNameDisplay";
    constexpr wchar_t canPair[] = L"System.Devices.Aep.CanPair";
    constexpr wchar_t withoutValue[] = L"System.Devices.GlyphIcon";
    constexpr wchar_t absent[] = L"System.Devices.Aep.SignalStrength"; // not asked for

    Properties PropertiesOfHeadset()
    {
        Load(prompt + Device("Headset", "a4:c1:38:5e:22:0f"));
        Watcher watcher;
        return watcher.Devices().at(0).Properties();
    }

    // A map and a box that fail as no other does.
    struct FailingMap : FakeObject<platform::PropertyMap>
    {
        HRESULT STDMETHODCALLTYPE Lookup(HSTRING, ::IInspectable**) noexcept override
        {
            return platformCode;
        }
        HRESULT STDMETHODCALLTYPE get_Size(UINT32*) noexcept override
        {
            return platformCode;
        }
        HRESULT STDMETHODCALLTYPE HasKey(HSTRING, boolean*) noexcept override
        {
            return platformCode;
        }
        HRESULT STDMETHODCALLTYPE Split(platform::PropertyMap**, platform::PropertyMap**) noexcept override
        {
            return platformCode;
        }
    };

    struct FailingBox : FakeObject<platform::IReference<INT32>>
    {
        HRESULT STDMETHODCALLTYPE get_Value(INT32*) noexcept override
        {
            return platformCode;
        }
    };
} // namespace

TEST(WinrtProperties, AreFoundByTheirNames)
{
    auto const properties = PropertiesOfHeadset();
    EXPECT_GT(properties.Size(), 2u);
    EXPECT_TRUE(properties.HasKey(name));
    EXPECT_FALSE(properties.HasKey(absent));
    EXPECT_TRUE(properties.Lookup(name));
    EXPECT_TRUE(properties.HasKey(withoutValue));
    EXPECT_FALSE(properties.Lookup(withoutValue));
}

TEST(WinrtProperties, OneThatIsAbsentIsAnErrorOrNull)
{
    auto const properties = PropertiesOfHeadset();
    EXPECT_EQ(CodeOf([&] { properties.Lookup(absent); }), outOfBounds);
    EXPECT_FALSE(properties.TryLookup(absent));
    EXPECT_TRUE(properties.TryLookup(hstring(name)));
}

TEST(WinrtProperties, AMapThatFailsThrowsItsCode)
{
    FailingMap map;
    map.AddRef();
    Properties const properties{static_cast<platform::PropertyMap*>(&map), winrt::take_ownership_from_abi};
    EXPECT_EQ(CodeOf([&] { properties.Lookup(name); }), platformCode);
    EXPECT_EQ(CodeOf([&] { properties.TryLookup(name); }), platformCode);
    EXPECT_EQ(CodeOf([&] { (void)properties.HasKey(name); }), platformCode);
    EXPECT_EQ(CodeOf([&] { (void)properties.Size(); }), platformCode);
}

TEST(WinrtUnbox, GivesTheValueOfItsType)
{
    auto const properties = PropertiesOfHeadset();
    EXPECT_EQ(unbox_value_or<hstring>(properties.Lookup(name), L"?"), hstring(L"Headset"));
    EXPECT_TRUE(unbox_value_or<bool>(properties.Lookup(canPair), false));
}

TEST(WinrtUnbox, GivesTheDefaultForNullAndForAnotherType)
{
    auto const properties = PropertiesOfHeadset();
    EXPECT_EQ(unbox_value_or<hstring>(properties.Lookup(withoutValue), L"?"), hstring(L"?"));
    EXPECT_EQ(unbox_value_or<std::int32_t>(properties.Lookup(name), -7), -7);
    EXPECT_EQ(unbox_value_or<hstring>(properties.Lookup(canPair), L"?"), hstring(L"?"));
}

TEST(WinrtUnbox, ABoxThatFailsThrowsItsCode)
{
    FailingBox box;
    box.AddRef();
    Object const value{static_cast<platform::IReference<INT32>*>(&box), winrt::take_ownership_from_abi};
    EXPECT_EQ(CodeOf([&] { unbox_value_or<std::int32_t>(value, 0); }), platformCode);
}

TEST(WinrtWatcher, TellsItsStatus)
{
    using enumeration::DeviceWatcherStatus;
    Load(patient);
    Watcher const watcher;
    EXPECT_EQ(watcher.Sender().Status(), DeviceWatcherStatus::Started);
    SimulateEnumerationCompletes();
    EXPECT_TRUE(WaitIdle());
    EXPECT_EQ(watcher.Sender().Status(), DeviceWatcherStatus::EnumerationCompleted);
}
