#include "platform/freedesktop/sync_folder/SyncFolderLocation.h"

#include <utility>

#include "preference_sync/SharedSetCodec.h"

namespace lumatile {

static_assert(SharedStore::largestValue == SharedSetCodec::largestValue);

using Condition = SharedStoreStatus::Condition;
using File = SyncFolderVisit::File;

SyncFolderLocation::SyncFolderLocation(std::string folder, bool isFirstContact, std::string writer)
    : folder_(std::move(folder)), writer_(std::move(writer)), isFirstContact_(isFirstContact) {}

std::string SyncFolderLocation::path() const { return folder_ + "/" + SyncFolderVisit::fileName; }

std::string SyncFolderLocation::copiesPath() const {
    return folder_ + "/" + SyncFolderVisit::asideName;
}

SharedStoreStatus SyncFolderLocation::status() const {
    SharedStoreStatus status;
    status.condition = condition();
    status.location = folder_;
    status.lastSynced = lastSynced_;
    status.failure = readFailure_.empty() ? writeFailure_ : readFailure_;
    status.copiesPutAside = copiesPutAside_;
    status.copiesLocation = copiesPath();
    status.hasKeptOwn = hasKeptOwn_;
    status.hasKeptOthers = hasKeptOthers_;
    status.hasKeptUnusable = hasKeptUnusable_;
    status.clockLead = clockLead_.seconds();
    return status;
}

Condition SyncFolderLocation::condition() const {
    switch (found_) {
        case Found::nothingYet:
        case Found::unreachable:
            return Condition::notReachable;
        case Found::missing:
            return Condition::missing;
        case Found::damaged:
            return Condition::damaged;
        case Found::here:
            break;
    }
    if (hasToWrite()) {
        return hasFailedToWrite() ? Condition::notWritable : Condition::sending;
    }
    if (replica_.isWithheld()) {
        return Condition::notUsable;
    }
    return isTooLarge_ ? Condition::tooLarge : Condition::current;
}

SyncFolderLocation::Outcome SyncFolderLocation::refuseTooLarge() {
    Outcome outcome;
    if (!hasUnsent()) {
        return outcome;
    }
    isTooLarge_ = !SharedSetCodec::print(*replica_.unsent());
    if (isTooLarge_) {
        replica_.dropUnsent();
        outcome.complaints.emplace_back("the settings are too large to be shared");
        outcome.news.emplace_back(SyncReason::quotaViolation);
    }
    return outcome;
}

SyncFolderLocation::Outcome SyncFolderLocation::keep(const SharedSet& set) {
    if (std::optional<std::string> text = SharedSetCodec::print(set)) {
        toKeep_.push_back(*std::move(text));
        return {};
    }
    return {{"an older change of this computer is too large to be kept"}, {}};
}

SyncFolderLocation::Outcome SyncFolderLocation::startAnew() {
    Outcome outcome;
    if (found_ == Found::damaged || found_ == Found::missing) {
        startsAnew_ = true;
        over_.reset();
        found_ = Found::here;
        replica_.found({});
        outcome.news.emplace_back(SyncReason::initialSync);
    }
    return outcome;
}

SyncFolderVisit::Errand SyncFolderLocation::errand(int restMilliseconds) const {
    SyncFolderVisit::Errand errand;
    errand.folder = folder_;
    // Before it is known what lies there, nothing is written over it.
    if (hasUnsent() && hasBeenRead()) {
        errand.text = SharedSetCodec::print(*replica_.unsent());
    }
    errand.over = over_;
    errand.keepsReplaced = replica_.replacesUnused();
    errand.toKeep = toKeep_;
    errand.copiesAfter = copiesAfter_;
    errand.writer = writer_;
    errand.clears = !isCleared_;
    errand.own = own_;
    errand.restMilliseconds = restMilliseconds;
    errand.overAnything = startsAnew_;
    errand.mayBegin = isFirstContact_ || startsAnew_;
    errand.knownTime = changeTime(replica_.accepted().value_or(SharedSet{}));
    return errand;
}

SyncFolderLocation::Outcome SyncFolderLocation::take(const SyncFolderVisit& visit, double now) {
    Outcome outcome;
    if (visit.copiesPutAside > 0) {
        copiesPutAside_ += visit.copiesPutAside;
        outcome.complaints.push_back(std::to_string(visit.copiesPutAside) +
                                     " replaced or conflicting settings files were put into " +
                                     copiesPath());
    }
    copiesAfter_ = visit.copiesAfter;
    isCleared_ = isCleared_ || visit.file != File::unreachable;
    noteKept(visit, outcome);
    readFailure_ = visit.readFailure;
    noteFile(visit, now, outcome);
    const bool hadFailed = hasFailedToWrite();
    writeFailure_ = visit.writeFailure;
    if (hasFailedToWrite() && !hadFailed) {
        complain(path() + " cannot be written: " + writeFailure_, outcome);
        outcome.news.emplace_back(SyncReason::quotaViolation);
    }
    if (condition() == Condition::current) {
        lastSynced_ = now;
    }
    outcome.news.emplace_back(std::nullopt);
    return outcome;
}

SyncFolderLocation::Outcome SyncFolderLocation::noteSilence() {
    Outcome outcome = noteFailure("no answer");
    complain("the folder " + folder_ + " does not answer", outcome);
    return outcome;
}

SyncFolderLocation::Outcome SyncFolderLocation::noteFailure(const std::string& failure) {
    found_ = Found::unreachable;
    readFailure_ = failure;
    return {{}, {std::nullopt}};
}

void SyncFolderLocation::noteKept(const SyncFolderVisit& visit, Outcome& outcome) {
    const auto note = [&](bool& hasKept, const char* what) {
        hasKept = true;
        outcome.complaints.push_back(std::string(what) + " was kept in " + copiesPath());
    };
    if (visit.kept > 0) {
        toKeep_.erase(toKeep_.begin(), toKeep_.begin() + static_cast<std::ptrdiff_t>(visit.kept));
        note(hasKeptOwn_, "an older change from this computer");
    }
    if (visit.hasKeptReplaced && replica_.isWithheld()) {
        note(hasKeptUnusable_, "a change from another computer that cannot be decoded");
    } else if (visit.hasKeptReplaced) {
        note(hasKeptOthers_, "a change from another computer that was not used");
    }
}

void SyncFolderLocation::noteFile(const SyncFolderVisit& visit, double now, Outcome& outcome) {
    switch (visit.file) {
        case File::unreachable:
            found_ = Found::unreachable;
            complain("the folder " + folder_ + " cannot be read: " + visit.readFailure, outcome);
            break;
        case File::damaged:
            if (!startsAnew_) {
                found_ = Found::damaged;
                complain(path() + " is damaged or incomplete and left alone until it is whole",
                         outcome);
            }
            break;
        case File::absent:
            noteAbsence(outcome);
            break;
        case File::good:
            noteGood(visit, now, outcome);
            break;
    }
}

void SyncFolderLocation::noteAbsence(Outcome& outcome) {
    if (isFirstContact_ || startsAnew_) {
        over_.reset();
        accept({}, outcome);
        return;
    }
    found_ = Found::missing;
    if (isLongGone_) {
        complain(path() + " is gone, and not written anew until it is back", outcome);
    }
}

void SyncFolderLocation::noteGood(const SyncFolderVisit& visit, double now, Outcome& outcome) {
    over_ = visit.text;
    clockLead_.note(changeTime(visit.set), now);
    if (visit.isOwn) {
        own_ = visit.text;
    }
    startsAnew_ = false;
    if (visit.hasWritten) {
        replica_.sent(visit.set);
    }
    accept(visit.set, outcome);
    isFirstContact_ = false;
}

void SyncFolderLocation::accept(const SharedSet& set, Outcome& outcome) {
    found_ = Found::here;
    isLongGone_ = false;
    if (!hasFailedToWrite()) {
        complaint_.clear();
    }
    const bool wasRead = hasBeenRead();
    const bool isNews = replica_.found(set);
    if (!wasRead) {
        outcome.news.push_back(isFirstContact_ ? std::optional(SyncReason::initialSync)
                                               : std::nullopt);
    } else if (isNews) {
        outcome.news.emplace_back(SyncReason::server);
    }
}

void SyncFolderLocation::complain(const std::string& complaint, Outcome& outcome) {
    if (complaint != complaint_) {
        complaint_ = complaint;
        outcome.complaints.push_back(complaint);
    }
}

}  // namespace lumatile
