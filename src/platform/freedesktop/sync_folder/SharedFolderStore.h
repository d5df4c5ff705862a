#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/Lifeline.h"
#include "base/ObserverList.h"
#include "platform/freedesktop/glib/MainLoopSource.h"
#include "platform/freedesktop/sync_folder/ComputerMark.h"
#include "platform/freedesktop/sync_folder/FolderEvents.h"
#include "platform/freedesktop/sync_folder/MountTable.h"
#include "platform/freedesktop/sync_folder/SyncFolderLocation.h"
#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"
#include "platform/freedesktop/sync_folder/SyncFolderVisits.h"
#include "ports/Preferences.h"
#include "ports/SharedStore.h"
#include "ports/SystemLog.h"
#include "preference_sync/SyncReason.h"

namespace lumatile {

/// Shares settings through a folder that the user names and some service mirrors to other
/// computers, or that lies on a network: one file, replaced as a whole. `SyncFolderLocation` knows
/// what is there and what is to be written, `SyncFolderVisits` look and write; this decides when,
/// on the main loop of GLib, which the toolkit's run loop serves.
///
/// The folder's path is a setting; so is that of the folder in which the file was seen last.
class SharedFolderStore final : public SharedStore {
public:
    static constexpr std::string_view folderKey = "syncFolder";
    static constexpr std::string_view metFolderKey = "syncFolderMet";

    /// How it waits; tests hurry.
    struct Pace {
        /// Between visits where the kernel does not tell of changes by others, and between attempts
        /// to write. A minute is soon enough for settings and nothing to a server.
        int pollMilliseconds = 60'000;
        /// After which a visit counts as unanswered. Discs that have to start take some seconds.
        int patienceMilliseconds = 10'000;
        /// After which it is said that the file has gone: services take one away a moment before
        /// they put the next in its place.
        int absenceMilliseconds = 10'000;
        /// Before anything is written over a file that somebody else has just put there; see
        /// `SyncFolderVisit::Errand`.
        int restMilliseconds = 2'000;
        /// As on a network, also where the kernel tells.
        bool alwaysPolls = false;
        std::function<SyncFolderVisit(const SyncFolderVisit::Errand&)> visit =
            [](const SyncFolderVisit::Errand& errand) { return SyncFolderVisit(errand); };
    };

    /// Begins to visit the stored folder, if there is one.
    /// @param preferences and `log` outlive the store
    SharedFolderStore(Preferences& preferences, SystemLog& log);
    SharedFolderStore(Preferences& preferences, SystemLog& log, Pace pace);
    SharedFolderStore(const SharedFolderStore&) = delete;
    SharedFolderStore& operator=(const SharedFolderStore&) = delete;

    /// A visit under way is left to itself.
    ~SharedFolderStore() override;

    std::optional<Bytes> data(std::string_view key) override;
    void set(const std::optional<Bytes>& value, std::string_view key) override;
    void synchronize() override;
    bool hasBeenRead() override;
    SharedStoreStatus status() override;

    /// @param location an absolute path
    void setLocation(const std::optional<std::string>& location) override;
    void heed(SharedSetAdvice advice) override;
    void keep(const SharedSet& set) override;
    void startAnew() override;
    [[nodiscard]] SharedStoreWatch observe(
        std::function<void(const SharedStoreChange&)> changed) override;

    /// Whether it is looking into the folder just now.
    bool isVisiting() const { return visits_.isVisiting(); }

private:
    /// What is listened to and waited for at one folder.
    struct Waits {
        std::optional<FolderEvents> queue;
        MainLoopSource events;
        MainLoopSource poll;
        MainLoopSource absence;
        MainLoopSource rest;
    };

    std::optional<SyncFolderLocation> storedLocation() const;
    void sendSoon();
    void visit();
    SyncFolderVisit::Errand errand();
    void take(std::unique_ptr<SyncFolderVisits::Report> report);
    void remember(const SyncFolderVisit& visit);
    void listen(FolderEvents events);
    void waitAfter(const SyncFolderVisit& visit);
    void publish(const SyncFolderLocation::Outcome& outcome);
    void tell(std::optional<SyncReason> reason);

    Preferences& preferences_;
    SystemLog& log_;
    Pace pace_;
    std::string writer_ = computerMark();
    SharedSetAdvice advice_;
    std::optional<SyncFolderLocation> location_;
    std::optional<Waits> waits_{std::in_place};
    SyncFolderVisits visits_;
    MainLoopSource soon_;  ///< Sends what is set in this turn of the loop.
    MountTable mounts_;
    MainLoopSource mountChanges_;
    ObserverList<const SharedStoreChange&> observers_;
    Lifeline lifeline_;  // For what observers are still to be told when this is gone.
};

}  // namespace lumatile
