#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/ObserverList.h"
#include "preference_sync/SharedSet.h"
#include "preference_sync/SharedSetAdvice.h"

namespace lumatile {

/// What a store of shared settings tells of.
struct SharedStoreChange {
    /// 0: another computer changed the set. 1: the first contact with a location. 2: something
    /// could not be stored for want of room or permission. 3: the location is another one now.
    /// Absent: what the store answers is as before, but its status may be another one, or it could
    /// be read for the first time since the program started.
    std::optional<int> reasonCode;
};

/// How it stands with the location, for the settings window.
struct SharedStoreStatus {
    enum class Condition {
        noLocation,    ///< The user has named none.
        notReachable,  ///< It could not be read since the program started or it was named.
        current,       ///< What lies there is what this computer has.
        sending,       ///< This computer's last change is on its way there.
        notWritable,   ///< This computer's last change could not be written; it is tried again.
        tooLarge,      ///< This computer's last change is too large to be shared.
        damaged,       ///< What lies there cannot be read, and nothing is written over it.
        missing,       ///< What lay there is gone, and nothing is written in its place.
        notUsable,     ///< What lies there is whole, and this program does not understand it.
    };

    Condition condition = Condition::noLocation;
    std::string location;  ///< As the user knows it; empty where there is none.
    /// When this computer and the location had the same set last, seconds since 1970-01-01 00:00
    /// UTC; absent when not since the program started.
    std::optional<double> lastSynced;
    std::string failure;  ///< The system's words for what failed; empty where it has none.
    std::size_t copiesPutAside = 0;  ///< Copies from collisions that were put aside since then.
    /// Where they are put, and what follows here.
    std::string copiesLocation{};
    /// Since then a change was kept there that does not count: one of this computer, one of
    /// another, one that this program does not understand.
    bool hasKeptOwn = false;
    bool hasKeptOthers = false;
    bool hasKeptUnusable = false;
    /// By how many seconds some computer's clock is ahead of this one's; absent for a minute and
    /// less.
    std::optional<double> clockLead{};

    friend bool operator==(const SharedStoreStatus&, const SharedStoreStatus&) = default;
};

/// Being told of changes; destroying it ends that.
using SharedStoreWatch = ObserverList<const SharedStoreChange&>::Subscription;

/// Port: bytes under keys that the user's computers share through a location which the user names.
/// Everything is answered from memory, from the last whole set that was found to be good; reading
/// and writing the location happen by themselves and never wait. What was set in one turn of the
/// run loop arrives together or not at all.
class SharedStore {
public:
    /// The longest value that is shared, bytes (1 MiB).
    static constexpr std::size_t largestValue = std::size_t{1} << 20U;

    virtual ~SharedStore() = default;

    virtual std::optional<Bytes> data(std::string_view key) = 0;

    /// Stores `value`, or takes `key` out of the set. Nothing where there is no location.
    virtual void set(const std::optional<Bytes>& value, std::string_view key) = 0;

    /// Asks for what was set to be brought to the location soon. It is brought there without that
    /// as well, after the present turn of the run loop, and tried again when it failed.
    virtual void synchronize() = 0;

    /// Whether it is known what lies at the location.
    virtual bool hasBeenRead() = 0;

    virtual SharedStoreStatus status() = 0;

    /// The user names a location, or none. What is known of the former one is forgotten, what is on
    /// its way there as well; nothing of it is removed.
    virtual void setLocation(const std::optional<std::string>& location) = 0;

    /// Goes by that advice from now on, on what was read already as well. A set that cannot be used
    /// is not answered, and stays at the location until this computer's is written over it. What is
    /// written over without ever having been used here is put among the copies before.
    virtual void heed(SharedSetAdvice advice) = 0;

    /// Puts a set of this computer, which is not to be used, among the copies soon.
    virtual void keep(const SharedSet& set) = 0;

    /// The user gives up what lies there damaged or is missing: it counts as empty from now on, so
    /// that this computer's settings are written in its place. Nothing in other conditions.
    virtual void startAnew() = 0;

    /// Calls `changed` from the run loop.
    [[nodiscard]] virtual SharedStoreWatch observe(
        std::function<void(const SharedStoreChange&)> changed) = 0;
};

}  // namespace lumatile
