#include "simulator/neighbourhood/Subscription.h"

#include "simulator/neighbourhood/Thread.h"

#include <algorithm>

namespace simulator
{
    namespace
    {
        void TellAll(std::shared_ptr<Subscription> const& subscription)
        {
            auto& neighbourhood = TheNeighbourhood();
            std::unique_lock lock(neighbourhood.mutex);
            while (!subscription->untold.empty())
            {
                auto const happening = std::move(subscription->untold.front());
                subscription->untold.pop_front();
                lock.unlock();
                subscription->hear(subscription->generation, happening);
                lock.lock();
            }
            subscription->busy = false;
            --neighbourhood.telling;
            neighbourhood.changed.notify_all();
        }
    } // namespace

    void Subscribe(std::shared_ptr<Subscription> const& subscription)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        subscription->generation = neighbourhood.generation;
        neighbourhood.subscriptions.emplace(subscription->subject, subscription);
    }

    void Unsubscribe(std::shared_ptr<Subscription> const& subscription)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        subscription->untold.clear();
        auto const [first, last] = neighbourhood.subscriptions.equal_range(subscription->subject);
        auto const own = std::find_if(first, last, [&](auto const& one) { return one.second == subscription; });
        if (own != last)
        {
            neighbourhood.subscriptions.erase(own);
        }
    }

    void TellSubscribers(Neighbourhood& neighbourhood, Happening const& happening)
    {
        auto const [first, last] = neighbourhood.subscriptions.equal_range(happening.id);
        for (auto one = first; one != last; ++one)
        {
            auto const& subscription = one->second;
            subscription->untold.push_back(happening);
            if (!subscription->busy)
            {
                OnOwnThread([subscription] { TellAll(subscription); });
                subscription->busy = true;
                ++neighbourhood.telling;
            }
        }
    }

    void DropSubscriptions(Neighbourhood& neighbourhood)
    {
        for (auto const& [subject, subscription] : neighbourhood.subscriptions)
        {
            subscription->untold.clear();
        }
        neighbourhood.subscriptions.clear(); // each is its object's too: nothing is released under the lock
    }
} // namespace simulator
