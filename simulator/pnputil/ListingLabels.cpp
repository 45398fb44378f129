#include "simulator/pnputil/ListingLabels.h"

#include <cstddef>

namespace simulator
{
    ListingLabels const& LabelsIn(ListingLanguage language) noexcept
    {
        static constexpr ListingLabels labels[] = {
            {"Microsoft PnP Utility", "Instance ID", "Device Description", "Class Name", "Class GUID",
             "Manufacturer Name", "Status", "Driver Name", "Started"},
            {"Microsoft-PnP-Hilfsprogramm", "Instanz-ID", "Gerätebeschreibung", "Klassenname", "Klassen-GUID",
             "Herstellername", "Status", "Treibername", "Gestartet"},
            {"Microsoft PnP 工具", "实例 ID", "设备描述", "类名", "类 GUID", "制造商名称", "状态", "驱动程序名称",
             "已启动"},
        };
        return labels[static_cast<std::size_t>(language)];
    }
} // namespace simulator
