// A boxed property value, as the platform's maps hold them.
#pragma once

#include "simulator/properties/Property.h"
#include "simulator/com/Ref.h"

namespace simulator
{
    template <typename T>
    struct IReference : ::IInspectable
    {
        virtual HRESULT STDMETHODCALLTYPE get_Value(T* value) = 0;
    };

    // Null for a property that has no value.
    Ref<::IInspectable> Box(Value const& value);
} // namespace simulator
