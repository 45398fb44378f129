// The map of property values that devices and updates hand out: a copy, frozen when it is made.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Ref.h"
#include "simulator/properties/Property.h"

namespace simulator
{
    Ref<platform::PropertyMap> MakePropertyMap(Properties const& properties);
}
