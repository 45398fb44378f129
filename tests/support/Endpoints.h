// The platform's own objects, for tests of pieces: fetched from the simulated platform as a client does.
#pragma once

#include "pairing/Enumeration.h"
#include "simulator/VorlinkSimulator.h"
#include "tests/support/Neighbourhood.h"

#include <gtest/gtest.h>

#include <mutex>
#include <vector>

namespace test
{
    namespace enumeration = vorlink::enumeration;

    // A watcher over all Classic endpoints, its events kept in order of arrival.
    class Watcher
    {
    public:
        Watcher()
            : m_watcher(Create())
        {
            m_added = m_watcher.Added(winrt::auto_revoke, [this](auto&&, enumeration::DeviceInformation const& device) {
                std::lock_guard const lock(m_mutex);
                m_devices.push_back(device);
            });
            m_updated = m_watcher.Updated(winrt::auto_revoke,
                                          [this](auto&&, enumeration::DeviceInformationUpdate const& update) {
                                              std::lock_guard const lock(m_mutex);
                                              m_updates.push_back(update);
                                          });
            m_removed = m_watcher.Removed(winrt::auto_revoke, [](auto&&, auto&&) {});
            m_watcher.Start();
            EXPECT_TRUE(WaitIdle());
        }

        std::vector<enumeration::DeviceInformation> Devices()
        {
            EXPECT_TRUE(WaitIdle());
            std::lock_guard const lock(m_mutex);
            return m_devices;
        }

        std::vector<enumeration::DeviceInformationUpdate> Updates()
        {
            EXPECT_TRUE(WaitIdle());
            std::lock_guard const lock(m_mutex);
            return m_updates;
        }

        enumeration::DeviceWatcher const& Sender() const
        {
            return m_watcher;
        }

    private:
        static enumeration::DeviceWatcher Create()
        {
            return enumeration::DeviceInformation::CreateWatcher(
                L"System.Devices.Aep.ProtocolId:=\"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}\"", nullptr,
                enumeration::DeviceInformationKind::AssociationEndpoint);
        }

        std::mutex m_mutex;
        std::vector<enumeration::DeviceInformation> m_devices;
        std::vector<enumeration::DeviceInformationUpdate> m_updates;
        enumeration::DeviceWatcher m_watcher;
        enumeration::DeviceWatcher::Added_revoker m_added;
        enumeration::DeviceWatcher::Updated_revoker m_updated;
        enumeration::DeviceWatcher::Removed_revoker m_removed; // without it nothing comes after the enumeration
    };

    // The update that tells the watcher of a device's new name.
    inline enumeration::DeviceInformationUpdate Rename(Watcher& watcher, char const* address)
    {
        EXPECT_TRUE(SimulateDeviceChanges(ClassicId(address).c_str(), "System.ItemNameDisplay", "\"Renamed\""))
            << SimulatorLastError();
        return watcher.Updates().at(0);
    }
} // namespace test
