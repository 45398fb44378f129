#include "simulator/scenario/ScenarioAdapter.h"

#include "simulator/scenario/ScenarioNames.h"

namespace simulator
{
    void ReadAdapter(TableReader& reader, Adapter& adapter)
    {
        reader.ReadAddress("address", adapter.address);
        reader.Read("present", adapter.present);
        reader.Read("classic", adapter.classic);
        reader.Read("le", adapter.le);
        reader.Read("central-role", adapter.centralRole);
        reader.Read("peripheral-role", adapter.peripheralRole);
        reader.Read("advertisement-offload", adapter.advertisementOffload);
        reader.Read("secure-connections", adapter.secureConnections);
        reader.Read("extended-advertising", adapter.extendedAdvertising);
        constexpr std::int32_t most = 1650; // what Bluetooth allows in one advertisement
        reader.ReadNumber("max-advertisement-bytes", 0, most, adapter.maxAdvertisementLength);
        reader.RejectOtherKeys();
    }

    void ReadRadio(TableReader& reader, Radio& radio)
    {
        reader.ReadName("state", names::radioStates, radio.state);
        reader.Read("name", radio.name);
        reader.ReadNumber("access", names::radioAccess, radio.access);
        reader.ReadName("off-watchers", names::offWatchers, radio.offAborts);
        reader.ReadNumber("off-pairing", names::pairingStatuses, radio.offPairing);
        reader.ReadMilliseconds("off-after-ms", radio.offAfterMs);
        reader.RejectOtherKeys();
    }
} // namespace simulator
