#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedSharedStore.h"
#include "preference_sync/SharedSet.h"

namespace lumatile {

/// Locations at which several computers share their settings. Sets travel whole, but each on its
/// own way: late, in another order, or not at all. What reaches a location last lies there.
class SimulatedSharedFolder {
public:
    /// How one set, or the news of it, travels.
    struct Passage {
        double seconds = 0.1;
        bool isLost = false;
        bool isTold = true;  ///< False: the set arrives, and nobody is told.
    };

    static constexpr const char* usualLocation = "shared";

    /// Both outlive the folder.
    SimulatedSharedFolder(SimulatedClock& clock, SimulatedRunLoop& runLoop)
        : clock_(clock), runLoop_(runLoop) {}
    SimulatedSharedFolder(const SimulatedSharedFolder&) = delete;
    SimulatedSharedFolder& operator=(const SimulatedSharedFolder&) = delete;
    ~SimulatedSharedFolder() = default;

    /// A further computer, which begins to read the location. The store lives as long as the
    /// folder.
    /// @param location absent: the user has named none yet
    /// @param isFirstContact false: this computer knew the location before it was started
    SimulatedSharedStore& join(std::optional<std::string> location = usualLocation,
                               bool isFirstContact = true);

    /// What lies at a location; empty where nothing was ever stored.
    SharedSet present(const std::string& location = usualLocation) const;

    /// What was kept there because it does not count, in the order in which that was seen.
    const std::vector<SharedSet>& copies(const std::string& location = usualLocation) {
        return copies_[location];
    }

    /// Stores a set as a computer does that is not modelled, and tells the others.
    void put(const SharedSet& set, const std::string& location = usualLocation);

    /// Decides from now on how each set travels; called in the order in which they set out.
    void setRoute(std::function<Passage()> route) { route_ = std::move(route); }

    /// Every computer reads what lies at its location now and is told, as after a service's return.
    void resend();

private:
    friend class SimulatedSharedStore;

    void read(SimulatedSharedStore& store);
    void send(SimulatedSharedStore& store);
    void receive(SimulatedSharedStore& store, const std::string& location);
    void tellOthers(const SimulatedSharedStore* writer, const std::string& location);
    void deliver(SimulatedSharedStore& store, const std::string& location, const Passage& passage);

    SimulatedClock& clock_;
    SimulatedRunLoop& runLoop_;
    std::function<Passage()> route_ = [] { return Passage{}; };
    std::map<std::string, SharedSet> places_;
    std::map<std::string, std::vector<SharedSet>> copies_;
    std::vector<std::unique_ptr<SimulatedSharedStore>> stores_;
};

}  // namespace lumatile
