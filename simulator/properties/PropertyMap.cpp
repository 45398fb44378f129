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
                : key_(std::move(key))
                , value_(std::move(value))
            {
            }

            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.Collections.IKeyValuePair`2<String, Object>";
            }

            HRESULT STDMETHODCALLTYPE get_Key(HSTRING* key) override
            {
                return key ? MakeHstring(key_, key) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE get_Value(::IInspectable** value) override
            {
                return value ? (*value = Ref(value_).Detach(), S_OK) : E_POINTER;
            }

            std::string const& Key() const noexcept
            {
                return key_;
            }

        private:
            std::string const key_;
            Ref<::IInspectable> const value_;
        };

        using PropertyPairs = std::vector<Ref<PropertyPair>>;

        class PropertyIterator final : public Object<PairIterator>
        {
        public:
            explicit PropertyIterator(std::shared_ptr<PropertyPairs const> pairs)
                : pairs_(std::move(pairs))
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
                if (next_ >= pairs_->size())
                {
                    return outOfBounds;
                }
                *value = Ref<PropertyPair>((*pairs_)[next_]).Detach();
                return S_OK;
            }

            HRESULT STDMETHODCALLTYPE get_HasCurrent(boolean* value) override
            {
                return value ? (*value = next_ < pairs_->size(), S_OK) : E_POINTER;
            }

            HRESULT STDMETHODCALLTYPE MoveNext(boolean* value) override
            {
                next_ = std::min(next_ + 1, pairs_->size());
                return get_HasCurrent(value);
            }

            HRESULT STDMETHODCALLTYPE GetMany(UINT32 capacity, Pair** values, UINT32* actual) override
            {
                if (!actual || (capacity && !values))
                {
                    return E_POINTER;
                }
                for (*actual = 0; *actual < capacity && next_ < pairs_->size(); ++*actual, ++next_)
                {
                    values[*actual] = Ref<PropertyPair>((*pairs_)[next_]).Detach();
                }
                return S_OK;
            }

        private:
            std::shared_ptr<PropertyPairs const> const pairs_;
            std::size_t next_ = 0;
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
                pairs_ = std::move(pairs);
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
                return size ? (*size = static_cast<UINT32>(pairs_->size()), S_OK) : E_POINTER;
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
                return iterator ? (*iterator = Make<PropertyIterator>(pairs_).Detach(), S_OK) : E_POINTER;
            }

        private:
            PropertyPair* Find(HSTRING key) const
            {
                auto const name = FromHstring(key);
                auto const found = std::find_if(pairs_->begin(), pairs_->end(),
                                                [&](Ref<PropertyPair> const& pair) { return pair->Key() == name; });
                return found == pairs_->end() ? nullptr : found->Get();
            }

            std::shared_ptr<PropertyPairs const> pairs_;
        };
    } // namespace

    Ref<platform::PropertyMap> MakePropertyMap(Properties const& properties)
    {
        return Ref<platform::PropertyMap>::Adopt(Make<FrozenMap>(properties).Detach());
    }
} // namespace simulator
