#pragma once

#include <functional>
#include <memory>

#include "platform/freedesktop/glib/MainLoopSource.h"
#include "platform/freedesktop/sync_folder/FolderEvents.h"
#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"

namespace lumatile {

/// Visits to a folder, one at a time, each on a worker thread of the library with values of its
/// own, so that a mount which does not answer holds up nothing. All that it calls is called from
/// the main loop of GLib, or from inside `visit`.
class SyncFolderVisits {
public:
    using Errand = SyncFolderVisit::Errand;

    /// What a visit brings back; the events begin before it looked.
    struct Report {
        FolderEvents events;
        SyncFolderVisit visit;
    };

    struct Parts {
        /// Looks and writes; called on the worker's thread.
        std::function<SyncFolderVisit(const Errand&)> look;
        /// What the visit that begins now is to do.
        std::function<Errand()> errand;
        /// One is back. Null when it could not look, for want of memory.
        std::function<void(std::unique_ptr<Report>)> back;
        /// One has been away for longer than this; it is waited for all the same.
        std::function<void()> unanswered;
        int patienceMilliseconds = 0;
    };

    explicit SyncFolderVisits(Parts parts);
    SyncFolderVisits(const SyncFolderVisits&) = delete;
    SyncFolderVisits& operator=(const SyncFolderVisits&) = delete;

    /// A visit under way is left to itself.
    ~SyncFolderVisits() = default;

    /// Begins a visit, as soon as no other is under way.
    void visit();

    /// What is under way or asked for is of no interest any more.
    void forget();

    bool isVisiting() const { return current_ != nullptr; }

private:
    /// The visit that is waited for. The worker's answer holds it weakly.
    struct Current {
        SyncFolderVisits& visits;
        MainLoopSource patience;
    };
    struct Trip;

    void begin();
    void take(std::unique_ptr<Report> report);

    Parts parts_;
    std::shared_ptr<Current> current_;
    bool isWantedAgain_ = false;
};

}  // namespace lumatile
