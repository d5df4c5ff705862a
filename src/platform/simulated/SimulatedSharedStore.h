#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/Lifeline.h"
#include "base/ObserverList.h"
#include "ports/SharedStore.h"
#include "preference_sync/ClockLead.h"
#include "preference_sync/SharedSetReplica.h"

namespace lumatile {

class SimulatedSharedFolder;

/// One computer's shared store, and what can happen to its connection.
class SimulatedSharedStore final : public SharedStore {
public:
    /// Made by `SimulatedSharedFolder::join`.
    SimulatedSharedStore(SimulatedSharedFolder& sharedFolder, std::optional<std::string> location,
                         bool isFirstContact);

    std::optional<Bytes> data(std::string_view key) override { return replica_.data(key); }
    void set(const std::optional<Bytes>& value, std::string_view key) override;
    void synchronize() override { send(); }
    bool hasBeenRead() override { return replica_.hasBeenRead(); }
    SharedStoreStatus status() override;
    void setLocation(const std::optional<std::string>& location) override;
    void heed(SharedSetAdvice advice) override;
    void keep(const SharedSet& set) override;
    void startAnew() override;
    [[nodiscard]] SharedStoreWatch observe(
        std::function<void(const SharedStoreChange&)> changed) override;

    /// Cuts the computer off, or lets it read what lies at the location again.
    void setOnline(bool online);

    /// From now on the location takes nothing from this computer, or takes it again.
    void setFull(bool full);

    /// What lies at the location cannot be read from here, or can again.
    void setDamaged(bool damaged);

    /// The program on this computer ends and is started anew: what was not sent is lost, and nobody
    /// observes any more. The location is known by now.
    void restart();

    const std::optional<std::string>& location() const { return location_; }
    const SharedSetReplica& replica() const { return replica_; }

    /// Tells of a change as a store does, whatever has happened.
    void tell(std::optional<int> reasonCode);

private:
    friend class SimulatedSharedFolder;

    bool isInContact() const { return location_ && isOnline_ && !isDamaged_; }
    void send();
    void forget();
    void arrive(const SharedSet& set, bool isTold);
    void note(SharedStoreStatus::Condition condition);

    SimulatedSharedFolder& sharedFolder_;
    std::optional<std::string> location_;
    SharedSetAdvice advice_;
    SharedSetReplica replica_;
    ClockLead clockLead_;
    SharedStoreStatus status_;
    std::optional<ObserverList<const SharedStoreChange&>> observers_{std::in_place};
    bool isFirstContact_;
    bool isOnline_ = true;
    bool isFull_ = false;
    bool isDamaged_ = false;
    bool sendsSoon_ = false;
    Lifeline lifeline_;
};

}  // namespace lumatile
