#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"
#include "ports/SharedStore.h"
#include "preference_sync/ClockLead.h"
#include "preference_sync/SharedSetReplica.h"
#include "preference_sync/SyncReason.h"

namespace lumatile {

/// What is known of one folder, and what is to be brought there. A value of its own: another folder
/// is another location, which begins with nothing of the former one. It touches no folder and waits
/// for nothing.
class SyncFolderLocation {
public:
    /// What has followed from something that happened.
    struct Outcome {
        /// Lines for the log, one for as long as it stays so.
        std::vector<std::string> complaints;
        /// What observers are to be told in this order; absent as in `SharedStoreChange`.
        std::vector<std::optional<SyncReason>> news;
    };

    /// @param writer this computer's name for temporary files
    /// @param isFirstContact whether this computer has never seen the file in `folder`. Where it
    /// has, a missing file means an unmounted folder or a deletion, and not that there is nothing.
    SyncFolderLocation(std::string folder, bool isFirstContact, std::string writer = {});

    const std::string& folder() const { return folder_; }
    bool isFirstContact() const { return isFirstContact_; }

    std::optional<Bytes> data(std::string_view key) const { return replica_.data(key); }
    bool hasBeenRead() const { return replica_.hasBeenRead(); }
    SharedStoreStatus status() const;

    /// See `SharedStore`.
    void heed(SharedSetAdvice advice) { replica_.heed(std::move(advice)); }
    Outcome keep(const SharedSet& set);

    void set(const std::optional<Bytes>& value, std::string_view key) { replica_.set(value, key); }

    /// Whether a change waits to be brought there.
    bool hasUnsent() const { return replica_.unsent().has_value(); }

    /// Whether anything does, as the settings or among the copies.
    bool hasToWrite() const { return hasUnsent() || !toKeep_.empty(); }

    /// Whether copies in the folder have not been looked at yet.
    bool hasMoreCopies() const { return !copiesAfter_.empty(); }

    /// Gives up what waits to be sent when it is too large for that.
    Outcome refuseTooLarge();

    /// The user gives up what lies there damaged or is missing.
    /// @return nothing in other conditions
    Outcome startAnew();

    /// What the next visit is to do there.
    /// @param restMilliseconds see `SyncFolderVisit::Errand`
    SyncFolderVisit::Errand errand(int restMilliseconds) const;

    /// Takes note of what a visit has found and done.
    /// @param now seconds since 1970-01-01 00:00 UTC
    Outcome take(const SyncFolderVisit& visit, double now);

    /// A visit has not come back for long.
    Outcome noteSilence();

    /// A visit came back without having looked.
    Outcome noteFailure(const std::string& failure);

    /// The last visit found no file where one is expected, and it is too soon to speak of it:
    /// services take one away a moment before they put the next in its place.
    bool awaitsReturn() const { return found_ == Found::missing && !isLongGone_; }

    /// It is no more too soon.
    void noteLongAbsence() { isLongGone_ = true; }

    /// What lies there was read, or it is known that nothing does.
    bool isHere() const { return found_ == Found::here; }

    /// The last visit could not write what it should have.
    bool hasFailedToWrite() const { return !writeFailure_.empty(); }

private:
    enum class Found { nothingYet, unreachable, missing, damaged, here };

    std::string path() const;
    std::string copiesPath() const;
    SharedStoreStatus::Condition condition() const;
    void complain(const std::string& complaint, Outcome& outcome);
    void noteKept(const SyncFolderVisit& visit, Outcome& outcome);
    void noteFile(const SyncFolderVisit& visit, double now, Outcome& outcome);
    void noteGood(const SyncFolderVisit& visit, double now, Outcome& outcome);
    void noteAbsence(Outcome& outcome);
    void accept(const SharedSet& set, Outcome& outcome);

    std::string folder_;
    SharedSetReplica replica_;
    ClockLead clockLead_;
    std::vector<std::string> toKeep_;  ///< Texts that are to be put among the copies.
    std::string copiesAfter_;  ///< The copy that was looked at last; empty: none, or all were.
    Found found_ = Found::nothingYet;
    std::optional<std::string> over_;  ///< The file's text as it was read last.
    std::optional<std::string> own_;   ///< That this program wrote last.
    std::optional<double> lastSynced_;
    std::string readFailure_;   ///< Of the last visit, as is the next.
    std::string writeFailure_;  ///< Empty where there was none.
    std::string complaint_;     ///< The last one, while it is so.
    std::size_t copiesPutAside_ = 0;
    bool hasKeptOwn_ = false;
    bool hasKeptOthers_ = false;
    bool hasKeptUnusable_ = false;
    std::string writer_;
    bool isFirstContact_;
    bool isCleared_ = false;   ///< Of what earlier processes have left.
    bool isTooLarge_ = false;  ///< What was to be sent last was.
    bool startsAnew_ = false;  ///< The user has given up what lies there, and it is still so.
    bool isLongGone_ = false;  ///< The file, by which time that may be said.
};

}  // namespace lumatile
