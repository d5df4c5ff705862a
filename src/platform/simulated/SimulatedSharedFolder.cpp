#include "platform/simulated/SimulatedSharedFolder.h"

#include <utility>

#include "preference_sync/SyncReason.h"

namespace lumatile {

SimulatedSharedStore& SimulatedSharedFolder::join(std::optional<std::string> location,
                                                  bool isFirstContact) {
    stores_.push_back(
        std::make_unique<SimulatedSharedStore>(*this, std::move(location), isFirstContact));
    read(*stores_.back());
    return *stores_.back();
}

SharedSet SimulatedSharedFolder::present(const std::string& location) const {
    const auto place = places_.find(location);
    return place == places_.end() ? SharedSet{} : place->second;
}

void SimulatedSharedFolder::put(const SharedSet& set, const std::string& location) {
    places_[location] = set;
    tellOthers(nullptr, location);
}

void SimulatedSharedFolder::resend() {
    for (const auto& store : stores_) {
        if (store->isInContact()) {
            store->arrive(present(*store->location()), true);
            store->tell(code(SyncReason::server));
        }
    }
}

void SimulatedSharedFolder::read(SimulatedSharedStore& store) {
    if (store.isInContact()) {
        deliver(store, *store.location(), route_());
    }
}

void SimulatedSharedFolder::send(SimulatedSharedStore& store) {
    const Passage passage = route_();
    if (!passage.isLost) {
        clock_.happen(SimulatedClock::fromSeconds(passage.seconds),
                      [this, &store, location = *store.location()] { receive(store, location); });
    }
}

void SimulatedSharedFolder::receive(SimulatedSharedStore& store, const std::string& location) {
    // What was to be sent may have been taken back, or be on the way twice.
    if (!store.isInContact() || store.location() != location || !store.replica_.unsent()) {
        return;
    }
    // Two have changed it at once: the later change counts.
    if (store.replica_.found(present(location))) {
        store.note(SharedStoreStatus::Condition::current);
        store.tell(code(SyncReason::server));
        return;
    }
    if (!store.replica_.unsent()) {
        return;
    }
    if (store.replica_.replacesUnused()) {
        copies_[location].push_back(present(location));
        (store.replica_.isWithheld() ? store.status_.hasKeptUnusable
                                     : store.status_.hasKeptOthers) = true;
    }
    const SharedSet set = *store.replica_.unsent();
    places_[location] = set;
    store.replica_.sent(set);
    store.clockLead_.note(changeTime(set), clock_.wallSeconds());
    store.note(SharedStoreStatus::Condition::current);
    tellOthers(&store, location);
}

void SimulatedSharedFolder::tellOthers(const SimulatedSharedStore* writer,
                                       const std::string& location) {
    for (const auto& store : stores_) {
        if (store.get() != writer && store->location() == location) {
            deliver(*store, location, route_());
        }
    }
}

void SimulatedSharedFolder::deliver(SimulatedSharedStore& store, const std::string& location,
                                    const Passage& passage) {
    if (passage.isLost) {
        return;
    }
    clock_.happen(SimulatedClock::fromSeconds(passage.seconds),
                  [&store, location, set = present(location), isTold = passage.isTold] {
                      if (store.isInContact() && store.location() == location) {
                          store.arrive(set, isTold);
                      }
                  });
}

}  // namespace lumatile
