#include "simulator/bluetooth/RadioList.h"

#include "simulator/com/Object.h"

#include <algorithm>

namespace simulator
{
    namespace
    {
        using platform::IRadio;
        using Radios = std::vector<Ref<IRadio>>;
        using View = platform::IVectorView<IRadio*>;
        using Iterator = platform::IIterator<IRadio*>;

        UINT32 Copy(Radios const& radios, std::size_t start, UINT32 capacity, IRadio** values)
        {
            UINT32 copied = 0;
            for (; copied < capacity && start + copied < radios.size(); ++copied)
            {
                values[copied] = Ref(radios[start + copied]).Detach();
            }
            return copied;
        }

        class RadioIterator final : public Object<Iterator>
        {
        public:
            explicit RadioIterator(std::shared_ptr<Radios const> radios)
                : m_radios(std::move(radios))
            {
            }

            HRESULT STDMETHODCALLTYPE get_Current(IRadio** value) override
            {
                if (!value)
                {
                    return E_POINTER;
                }
                *value = nullptr;
                return Copy(*m_radios, m_next, 1, value) == 1 ? S_OK : outOfBounds;
            }

            HRESULT STDMETHODCALLTYPE get_HasCurrent(boolean* value) override
            {
                return value ? (*value = m_next < m_radios->size(), S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE MoveNext(boolean* value) override
            {
                m_next = std::min(m_next + 1, m_radios->size());
                return get_HasCurrent(value);
            }

            HRESULT STDMETHODCALLTYPE GetMany(UINT32 capacity, IRadio** values, UINT32* actual) override
            {
                if (!actual || (capacity && !values))
                {
                    return E_POINTER;
                }
                *actual = Copy(*m_radios, m_next, capacity, values);
                m_next += *actual;
                return S_OK;
            }

        private:
            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.Collections.IIterator`1<Windows.Devices.Radios.Radio>";
            }

            std::shared_ptr<Radios const> const m_radios;
            std::size_t m_next = 0;
        };

        class RadioList final : public Object<View, platform::IIterable<IRadio*>>
        {
        public:
            explicit RadioList(Radios radios)
                : m_radios(std::make_shared<Radios const>(std::move(radios)))
            {
            }

            HRESULT STDMETHODCALLTYPE GetAt(UINT32 index, IRadio** value) override
            {
                if (!value)
                {
                    return E_POINTER;
                }
                *value = nullptr;
                return Copy(*m_radios, index, 1, value) == 1 ? S_OK : outOfBounds;
            }

            HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) override
            {
                return size ? (*size = static_cast<UINT32>(m_radios->size()), S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE IndexOf(IRadio* value, UINT32* index, boolean* found) override
            {
                if (!index || !found)
                {
                    return E_POINTER;
                }
                auto const at = std::ranges::find(*m_radios, value, [](Ref<IRadio> const& one) { return one.Get(); });
                *found = at != m_radios->end();
                *index = *found ? static_cast<UINT32>(at - m_radios->begin()) : 0;
                return S_OK;
            }

            HRESULT STDMETHODCALLTYPE GetMany(UINT32 start, UINT32 capacity, IRadio** values, UINT32* actual) override
            {
                if (!actual || (capacity && !values))
                {
                    return E_POINTER;
                }
                *actual = Copy(*m_radios, start, capacity, values);
                return start > m_radios->size() ? outOfBounds : S_OK;
            }

            HRESULT STDMETHODCALLTYPE First(Iterator** iterator) override
            {
                return iterator ? (*iterator = Make<RadioIterator>(m_radios).Detach(), S_OK) : E_POINTER;
            }

        private:
            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.Collections.IVectorView`1<Windows.Devices.Radios.Radio>";
            }

            std::shared_ptr<Radios const> const m_radios;
        };
    } // namespace

    Ref<View> MakeRadioList(Radios radios)
    {
        return Ref<View>::Adopt(Make<RadioList>(std::move(radios)).Detach());
    }
} // namespace simulator
