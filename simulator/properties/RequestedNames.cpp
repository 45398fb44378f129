#include "simulator/properties/RequestedNames.h"

#include "simulator/com/Codes.h"
#include "simulator/com/Hstring.h"
#include "simulator/com/Ref.h"
#include "simulator/properties/Property.h"

#include <objbase.h>
#include <winstring.h>

namespace simulator
{
    namespace
    {
        // "{guid} 13": a property key written out, which needs no name of its own.
        bool IsPropertyKey(std::string const& name)
        {
            auto const space = name.find(' ');
            GUID id{};
            return space != std::string::npos && space + 1 < name.size() &&
                   SUCCEEDED(IIDFromString(Widen(name.substr(0, space)).c_str(), &id)) &&
                   name.find_first_not_of("0123456789", space + 1) == std::string::npos;
        }

        HRESULT Judge(std::string const& name)
        {
            if (name.starts_with('{'))
            {
                return IsPropertyKey(name) ? S_OK : E_INVALIDARG;
            }
            return IsPropertyName(name) ? S_OK : elementNotFound;
        }

        HRESULT ReadNext(platform::IIterator<HSTRING>& iterator, std::string& name, boolean& more)
        {
            HSTRING text = nullptr;
            if (HRESULT const code = iterator.get_Current(&text); FAILED(code))
            {
                return code;
            }
            name = FromHstring(text);
            WindowsDeleteString(text);
            return iterator.MoveNext(&more);
        }
    } // namespace

    RequestedNames ReadNames(platform::IIterable<HSTRING>* list)
    {
        RequestedNames requested;
        if (!list)
        {
            return requested;
        }
        platform::IIterator<HSTRING>* first = nullptr;
        requested.code = list->First(&first);
        if (SUCCEEDED(requested.code) && !first)
        {
            requested.code = E_POINTER;
        }
        auto const iterator = Ref<platform::IIterator<HSTRING>>::Adopt(first);
        boolean more = false;
        if (SUCCEEDED(requested.code))
        {
            requested.code = iterator->get_HasCurrent(&more);
        }
        HRESULT verdict = S_OK; // on the whole list, which is read to its end for the trace
        while (SUCCEEDED(requested.code) && more)
        {
            std::string name;
            requested.code = ReadNext(*iterator.Get(), name, more);
            if (SUCCEEDED(verdict))
            {
                verdict = Judge(name);
            }
            requested.names.push_back(std::move(name));
        }
        if (SUCCEEDED(requested.code))
        {
            requested.code = verdict;
        }
        return requested;
    }
} // namespace simulator
