// A boxed property value, as the platform's maps hold them.
#pragma once

#include "simulator/com/Ref.h"
#include "simulator/properties/Property.h"

namespace simulator
{
    // Null for a property that has no value.
    Ref<::IInspectable> Box(Value const& value);
} // namespace simulator
