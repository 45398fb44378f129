#include "simulator/neighbourhood/Subscription.h"

#include "simulator/neighbourhood/Thread.h"

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
            std::erase(neighbourhood.telling, subscription);
            neighbourhood.changed.notify_all();
        }
    } // namespace

    void Subscribe(std::shared_ptr<Subscription> const& subscription)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        subscription->generation = neighbourhood.generation;
        neighbourhood.subscriptions.push_back(subscription);
    }

    void Unsubscribe(std::shared_ptr<Subscription> const& subscription)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        subscription->untold.clear();
        std::erase(neighbourhood.subscriptions, subscription);
    }

    void TellSubscribers(Neighbourhood& neighbourhood, Happening const& happening)
    {
        for (auto const& subscription : neighbourhood.subscriptions)
        {
            if (subscription->subject != happening.id)
            {
                continue;
            }
            subscription->untold.push_back(happening);
            if (!subscription->busy)
            {
                OnOwnThread([subscription] { TellAll(subscription); });
                subscription->busy = true;
                neighbourhood.telling.push_back(subscription);
            }
        }
    }

    void DropSubscriptions(Neighbourhood& neighbourhood)
    {
        for (auto const& subscription : neighbourhood.subscriptions)
        {
            subscription->untold.clear();
        }
        neighbourhood.subscriptions.clear(); // each is its object's too: nothing is released under the lock
    }
} // namespace simulator
