#include "platform/freedesktop/sync_folder/SharedFolderStore.h"

#include <glib.h>

#include <utility>

namespace lumatile {

namespace {

constexpr const char* logType = "SharedStore";

double wallSeconds() { return static_cast<double>(g_get_real_time()) / G_USEC_PER_SEC; }

}  // namespace

SharedFolderStore::SharedFolderStore(Preferences& preferences, SystemLog& log)
    : SharedFolderStore(preferences, log, Pace()) {}

SharedFolderStore::SharedFolderStore(Preferences& preferences, SystemLog& log, Pace pace)
    : preferences_(preferences),
      log_(log),
      pace_(std::move(pace)),
      location_(storedLocation()),
      visits_({.look = pace_.visit,
               .errand = [this] { return errand(); },
               .back = [this](auto report) { take(std::move(report)); },
               .unanswered = [this] { publish(location_->noteSilence()); },
               .patienceMilliseconds = pace_.patienceMilliseconds}) {
    if (mounts_.descriptor() >= 0) {
        mountChanges_ = MainLoopSource::when(mounts_.descriptor(),
                                             static_cast<GIOCondition>(G_IO_PRI | G_IO_ERR),
                                             [this] { visit(); });
    }
    visit();
}

SharedFolderStore::~SharedFolderStore() = default;

std::optional<SyncFolderLocation> SharedFolderStore::storedLocation() const {
    const std::optional<Bytes> folder = preferences_.bytes(folderKey);
    if (!folder) {
        return std::nullopt;
    }
    return SyncFolderLocation(*folder, preferences_.bytes(metFolderKey) != folder, writer_);
}

std::optional<Bytes> SharedFolderStore::data(std::string_view key) {
    return location_ ? location_->data(key) : std::nullopt;
}

bool SharedFolderStore::hasBeenRead() { return location_ && location_->hasBeenRead(); }

SharedStoreStatus SharedFolderStore::status() {
    return location_ ? location_->status() : SharedStoreStatus();
}

SharedStoreWatch SharedFolderStore::observe(std::function<void(const SharedStoreChange&)> changed) {
    return observers_.add(std::move(changed));
}

void SharedFolderStore::set(const std::optional<Bytes>& value, std::string_view key) {
    if (!location_) {
        return;
    }
    location_->set(value, key);
    sendSoon();
}

void SharedFolderStore::sendSoon() {
    if (!soon_.isRunning()) {
        soon_ = MainLoopSource::every(0, [this] { synchronize(); });
    }
}

void SharedFolderStore::synchronize() {
    soon_.stop();
    if (!location_) {
        return;
    }
    publish(location_->refuseTooLarge());
    if (location_->hasToWrite()) {
        visit();
    }
}

void SharedFolderStore::setLocation(const std::optional<std::string>& location) {
    if (location == (location_ ? std::optional(location_->folder()) : std::nullopt)) {
        return;
    }
    // Named by the user just now, so an empty one is meant to be begun with.
    preferences_.remove(metFolderKey);
    if (location) {
        preferences_.setBytes(folderKey, *location);
        location_.emplace(*location, true, writer_);
        location_->heed(advice_);
    } else {
        preferences_.remove(folderKey);
        location_.reset();
    }
    waits_.emplace();
    soon_.stop();
    visits_.forget();
    tell(SyncReason::account);
    visit();
}

void SharedFolderStore::heed(SharedSetAdvice advice) {
    advice_ = std::move(advice);
    if (location_) {
        location_->heed(advice_);
        // What was read already may count otherwise now.
        tell(std::nullopt);
    }
}

void SharedFolderStore::keep(const SharedSet& set) {
    if (location_) {
        publish(location_->keep(set));
        sendSoon();
    }
}

void SharedFolderStore::startAnew() {
    if (!location_) {
        return;
    }
    const SyncFolderLocation::Outcome outcome = location_->startAnew();
    if (!outcome.news.empty()) {
        publish(outcome);
        visit();
    }
}

void SharedFolderStore::visit() {
    if (location_) {
        visits_.visit();
    }
}

SyncFolderVisit::Errand SharedFolderStore::errand() {
    soon_.stop();
    publish(location_->refuseTooLarge());
    return location_->errand(pace_.restMilliseconds);
}

void SharedFolderStore::take(std::unique_ptr<SyncFolderVisits::Report> report) {
    if (!report) {
        publish(location_->noteFailure("out of memory"));
        return;
    }
    listen(std::move(report->events));
    const SyncFolderVisit& visit = report->visit;
    publish(location_->take(visit, wallSeconds()));
    remember(visit);
    waitAfter(visit);
    if (location_->isHere() && location_->hasToWrite() && !location_->hasFailedToWrite() &&
        !visit.awaitsRest) {
        visits_.visit();
    }
}

void SharedFolderStore::remember(const SyncFolderVisit& visit) {
    if (visit.file == SyncFolderVisit::File::good &&
        preferences_.bytes(metFolderKey) != location_->folder()) {
        preferences_.setBytes(metFolderKey, location_->folder());
    }
}

/// Replaces what has been listened to by the newer queue.
void SharedFolderStore::listen(FolderEvents events) {
    waits_->events.stop();
    waits_->queue.emplace(std::move(events));
    if (waits_->queue->descriptor() >= 0) {
        waits_->events = MainLoopSource::when(waits_->queue->descriptor(), G_IO_IN, [this] {
            if (waits_->queue->consume()) {
                visit();
            }
        });
    }
}

void SharedFolderStore::waitAfter(const SyncFolderVisit& visit) {
    if (!visit.isRemote && !pace_.alwaysPolls && !location_->hasFailedToWrite()) {
        waits_->poll.stop();
    } else if (!waits_->poll.isRunning()) {
        waits_->poll = MainLoopSource::every(pace_.pollMilliseconds, [this] { this->visit(); });
    }
    if (location_->isHere()) {
        waits_->absence.stop();
    } else if (location_->awaitsReturn() && !waits_->absence.isRunning()) {
        waits_->absence = MainLoopSource::every(pace_.absenceMilliseconds, [this] {
            waits_->absence.stop();
            location_->noteLongAbsence();
            this->visit();
        });
    }
    if (visit.awaitsRest ||
        (visit.file != SyncFolderVisit::File::unreachable && location_->hasMoreCopies())) {
        waits_->rest = MainLoopSource::every(pace_.restMilliseconds, [this] {
            waits_->rest.stop();
            this->visit();
        });
    }
}

void SharedFolderStore::publish(const SyncFolderLocation::Outcome& outcome) {
    for (const std::string& complaint : outcome.complaints) {
        log_.write(logType, complaint);
    }
    for (const std::optional<SyncReason> reason : outcome.news) {
        tell(reason);
    }
}

void SharedFolderStore::tell(std::optional<SyncReason> reason) {
    SharedStoreChange change;
    if (reason) {
        change.reasonCode = code(*reason);
    }
    MainLoopSource::once(lifeline_.guard([this, change] { observers_.notify(change); }));
}

}  // namespace lumatile
