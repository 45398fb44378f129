#include "simulator/properties/PropertyMap.h"

#include "simulator/com/Object.h"
#include "simulator/properties/BoxedValue.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace simulator
{
    namespace
    {
        using Pair = platform::IKeyValuePair<HSTRING, ::IInspectable*>;
        using PairIterator = platform::IIterator<Pair*>;
        using Pairs = platform::IIterable<Pair*>;

        class PropertyPair final : public Object<Pair>
        {
        public:
            PropertyPair(std::string key, Ref<::IInspectable> value)
                : m_key(std::move(key))
                , m_value(std::move(value))
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.Collections.IKeyValuePair`2<String, Object>";
            }

            HRESULT STDMETHODCALLTYPE get_Key(HSTRING* key) override
            {
                return key ? MakeHstring(m_key, key) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE get_Value(::IInspectable** value) override
            {
                return value ? (*value = Ref(m_value).Detach(), S_OK) : E_POINTER;
            }

            std::string const& Key() const noexcept
            {
                return m_key;
            }

        private:
            std::string const m_key;
            Ref<::IInspectable> const m_value;
        };

        using PropertyPairs = std::vector<Ref<PropertyPair>>;

        class PropertyIterator final : public Object<PairIterator>
        {
        public:
            explicit PropertyIterator(std::shared_ptr<PropertyPairs const> pairs)
                : m_pairs(std::move(pairs))
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.Collections.IIterator`1<Windows.Foundation.Collections.IKeyValuePair`2"
                       "<String, Object>>";
            }

            HRESULT STDMETHODCALLTYPE get_Current(Pair** value) override
            {
                if (!value)
                {
                    return E_POINTER;
                }
                *value = nullptr;
                if (m_next >= m_pairs->size())
                {
                    return outOfBounds;
                }
                *value = Ref<PropertyPair>((*m_pairs)[m_next]).Detach();
                return S_OK;
            }

            HRESULT STDMETHODCALLTYPE get_HasCurrent(boolean* value) override
            {
                return value ? (*value = m_next < m_pairs->size(), S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE MoveNext(boolean* value) override
            {
                m_next = std::min(m_next + 1, m_pairs->size());
                return get_HasCurrent(value);
            }

            HRESULT STDMETHODCALLTYPE GetMany(UINT32 capacity, Pair** values, UINT32* actual) override
            {
                if (!actual || (capacity && !values))
                {
                    return E_POINTER;
                }
                for (*actual = 0; *actual < capacity && m_next < m_pairs->size(); ++*actual, ++m_next)
                {
                    values[*actual] = Ref<PropertyPair>((*m_pairs)[m_next]).Detach();
                }
                return S_OK;
            }

        private:
            std::shared_ptr<PropertyPairs const> const m_pairs;
            std::size_t m_next = 0;
        };

        class FrozenMap final : public Object<platform::PropertyMap, Pairs>
        {
        public:
            explicit FrozenMap(Properties const& properties)
            {
                auto pairs = std::make_shared<PropertyPairs>();
                for (auto const& [name, value] : properties)
                {
                    pairs->push_back(Make<PropertyPair>(name, Box(value)));
                }
                m_pairs = std::move(pairs);
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.Collections.IMapView`2<String, Object>";
            }

            HRESULT STDMETHODCALLTYPE Lookup(HSTRING key, ::IInspectable** value) override
            {
                if (!value)
                {
                    return E_POINTER;
                }
                *value = nullptr;
                auto* const pair = Find(key);
                return pair ? pair->get_Value(value) : outOfBounds;
            }

            HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) override
            {
                return size ? (*size = static_cast<UINT32>(m_pairs->size()), S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE HasKey(HSTRING key, boolean* found) override
            {
                return found ? (*found = Find(key) != nullptr, S_OK) : E_POINTER;
            }

            // Two null halves are how a map says that it cannot be split.
            HRESULT STDMETHODCALLTYPE Split(platform::PropertyMap** first, platform::PropertyMap** second) override
            {
                return first && second ? (*first = *second = nullptr, S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE First(PairIterator** iterator) override
            {
                return iterator ? (*iterator = Make<PropertyIterator>(m_pairs).Detach(), S_OK) : E_POINTER;
            }

        private:
            PropertyPair* Find(HSTRING key) const
            {
                auto const name = FromHstring(key);
                auto const found = std::find_if(m_pairs->begin(), m_pairs->end(),
                                                [&](Ref<PropertyPair> const& pair) { return pair->Key() == name; });
                return found == m_pairs->end() ? nullptr : found->Get();
            }

            std::shared_ptr<PropertyPairs const> m_pairs;
        };
    } // namespace

    Ref<platform::PropertyMap> MakePropertyMap(Properties const& properties)
    {
        return Ref<platform::PropertyMap>::Adopt(Make<FrozenMap>(properties).Detach());
    }
} // namespace simulator
