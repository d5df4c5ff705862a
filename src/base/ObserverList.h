#pragma once

#include <cstddef>
#include <functional>
#include <iterator>
#include <list>
#include <memory>
#include <utility>

namespace lumatile {

/// Those who want to be told of something, told in the order in which they came. Observers may
/// come, go, notify again and destroy the list while they are being told. For one thread.
template <class... Arguments>
class ObserverList {
    struct Record;
    struct State;

public:
    using Observer = std::function<void(Arguments...)>;

    /// An observer's place in the list; destroying it takes the observer out. The list may be gone
    /// by then.
    class [[nodiscard]] Subscription {
    public:
        /// Of no list.
        Subscription() = default;
        Subscription(Subscription&& other) noexcept { swap(other); }
        Subscription& operator=(Subscription&& other) noexcept {
            Subscription taken(std::move(other));
            swap(taken);
            return *this;
        }
        Subscription(const Subscription&) = delete;
        Subscription& operator=(const Subscription&) = delete;
        ~Subscription() {
            if (const std::shared_ptr<State> state = state_.lock()) {
                state->remove(place_);
            }
        }

        /// Takes the observer out now.
        void reset() { *this = Subscription(); }

    private:
        friend class ObserverList;
        Subscription(std::weak_ptr<State> state, typename std::list<Record>::iterator place)
            : state_(std::move(state)), place_(place) {}

        void swap(Subscription& other) noexcept {
            std::swap(state_, other.state_);
            std::swap(place_, other.place_);
        }

        std::weak_ptr<State> state_;
        typename std::list<Record>::iterator place_{};
    };

    ObserverList() = default;
    ObserverList(const ObserverList&) = delete;
    ObserverList& operator=(const ObserverList&) = delete;
    ObserverList(ObserverList&&) = delete;
    ObserverList& operator=(ObserverList&&) = delete;

    /// During a notification the rest is told no more.
    ~ObserverList() { state_->isOpen = false; }

    /// @param observer one that is added during a notification is told from the next one on
    Subscription add(Observer observer) {
        return Subscription(
            state_, state_->records.insert(state_->records.end(), {std::move(observer), true}));
    }

    /// Tells everyone; who leaves on the way is told no more.
    void notify(Arguments... arguments) {
        // An observer may destroy this list, and with it itself.
        const std::shared_ptr<State> state = state_;
        const Round round(*state);
        auto record = state->records.begin();
        // Those who come during the round are behind these, and nobody's place goes before its end.
        for (std::size_t left = state->records.size(); left > 0 && state->isOpen; --left) {
            if (record->isWanted) {
                record->observer(arguments...);
            }
            ++record;
        }
    }

private:
    struct Record {
        Observer observer;
        bool isWanted;  ///< False for who has left and keeps the place until the round is over.
    };

    struct State {
        std::list<Record> records;
        int rounds = 0;  ///< That are under way, one inside the other.
        bool isOpen = true;

        void remove(typename std::list<Record>::iterator place) {
            place->isWanted = false;
            if (rounds == 0) {
                // Out of the list first: what an observer holds may take others out as it goes.
                std::list<Record> gone;
                gone.splice(gone.end(), records, place);
            }
        }

        void sweep() {
            std::list<Record> gone;
            for (auto record = records.begin(); record != records.end();) {
                const auto next = std::next(record);
                if (!record->isWanted) {
                    gone.splice(gone.end(), records, record);
                }
                record = next;
            }
        }
    };

    class Round {
    public:
        explicit Round(State& state) : state_(state) { ++state_.rounds; }
        Round(const Round&) = delete;
        Round& operator=(const Round&) = delete;
        ~Round() {
            if (--state_.rounds == 0) {
                state_.sweep();
            }
        }

    private:
        State& state_;
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace lumatile
