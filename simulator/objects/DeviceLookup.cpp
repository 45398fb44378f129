#include "simulator/objects/DeviceLookup.h"

#include "simulator/neighbourhood/Facet.h"
#include "simulator/objects/DeviceInformation.h"
#include "simulator/objects/Errand.h"

namespace simulator
{
    namespace
    {
        using platform::DeviceInformationKind;

        std::optional<Facet> FindNow(std::string const& id, DeviceInformationKind kind)
        {
            auto& neighbourhood = TheNeighbourhood();
            std::lock_guard const lock(neighbourhood.mutex);
            return FindFacet(neighbourhood, id, kind);
        }
    } // namespace

    Ref<LookupOperation> LookUp(std::string const& id, std::vector<std::string> const& requested,
                                DeviceInformationKind kind)
    {
        return RunErrand<platform::IDeviceInformation*>(
            id, [id, shown = ShownProperties(requested), kind](LookupOperation& async) {
                if (auto found = FindNow(id, kind))
                {
                    async.Complete(Ref<platform::IDeviceInformation>::Adopt(
                        Make<DeviceInformation>(found->id, found->kind, Show(*shown, found->properties)).Detach()));
                }
                else
                {
                    async.Fail(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
                }
            });
    }
} // namespace simulator
