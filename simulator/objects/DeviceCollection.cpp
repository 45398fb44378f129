#include "simulator/objects/DeviceCollection.h"

#include "simulator/com/Object.h"

#include <algorithm>
#include <cstddef>
#include <memory>

namespace simulator
{
    namespace
    {
        using platform::IDeviceInformation;
        using Iterator = platform::IIterator<IDeviceInformation*>;
        using Devices = std::vector<Ref<IDeviceInformation>>;

        // As many as there are and as fit.
        HRESULT CopyFrom(Devices const& devices, std::size_t start, UINT32 capacity, IDeviceInformation** values,
                         UINT32* actual)
        {
            if (!actual || (capacity && !values))
            {
                return E_POINTER;
            }
            for (*actual = 0; *actual < capacity && start + *actual < devices.size(); ++*actual)
            {
                values[*actual] = Ref(devices[start + *actual]).Detach();
            }
            return S_OK;
        }

        HRESULT CopyAt(Devices const& devices, std::size_t index, IDeviceInformation** value)
        {
            if (!value)
            {
                return E_POINTER;
            }
            *value = nullptr;
            if (index >= devices.size())
            {
                return outOfBounds;
            }
            *value = Ref(devices[index]).Detach();
            return S_OK;
        }

        class DeviceIterator final : public Object<Iterator>
        {
        public:
            explicit DeviceIterator(std::shared_ptr<Devices const> devices)
                : m_devices(std::move(devices))
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.Collections.IIterator`1<Windows.Devices.Enumeration.DeviceInformation>";
            }

            HRESULT STDMETHODCALLTYPE get_Current(IDeviceInformation** value) override
            {
                return CopyAt(*m_devices, m_next, value);
            }

            HRESULT STDMETHODCALLTYPE get_HasCurrent(boolean* value) override
            {
                return value ? (*value = m_next < m_devices->size(), S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE MoveNext(boolean* value) override
            {
                m_next = std::min(m_next + 1, m_devices->size());
                return get_HasCurrent(value);
            }

            HRESULT STDMETHODCALLTYPE GetMany(UINT32 capacity, IDeviceInformation** values, UINT32* actual) override
            {
                HRESULT const code = CopyFrom(*m_devices, m_next, capacity, values, actual);
                m_next += SUCCEEDED(code) ? *actual : 0;
                return code;
            }

        private:
            std::shared_ptr<Devices const> const m_devices;
            std::size_t m_next = 0;
        };

        class DeviceInformationCollection final
            : public Object<platform::DeviceCollection, platform::IIterable<IDeviceInformation*>>
        {
        public:
            explicit DeviceInformationCollection(Devices devices)
                : m_devices(std::make_shared<Devices const>(std::move(devices)))
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Devices.Enumeration.DeviceInformationCollection";
            }

            HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IDeviceInformation** value) override
            {
                return CopyAt(*m_devices, index, value);
            }

            HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) override
            {
                return size ? (*size = static_cast<UINT32>(m_devices->size()), S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE IndexOf(IDeviceInformation* value, UINT32* index, boolean* found) override
            {
                if (!index || !found)
                {
                    return E_POINTER;
                }
                auto const place =
                    std::ranges::find_if(*m_devices, [&](auto const& device) { return device.Get() == value; });
                *found = place != m_devices->end();
                *index = *found ? static_cast<UINT32>(place - m_devices->begin()) : 0;
                return S_OK;
            }

            HRESULT STDMETHODCALLTYPE GetMany(UINT32 start, UINT32 capacity, IDeviceInformation** values,
                                              UINT32* actual) override
            {
                if (actual)
                {
                    *actual = 0;
                }
                return start > m_devices->size() ? outOfBounds : CopyFrom(*m_devices, start, capacity, values, actual);
            }

            HRESULT STDMETHODCALLTYPE First(Iterator** iterator) override
            {
                return iterator ? (*iterator = Make<DeviceIterator>(m_devices).Detach(), S_OK) : E_POINTER;
            }

        private:
            std::shared_ptr<Devices const> const m_devices;
        };
    } // namespace

    Ref<platform::DeviceCollection> MakeDeviceCollection(std::vector<Ref<platform::IDeviceInformation>> devices)
    {
        return Ref<platform::DeviceCollection>::Adopt(Make<DeviceInformationCollection>(std::move(devices)).Detach());
    }
} // namespace simulator
