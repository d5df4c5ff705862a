#include "platform/freedesktop/sync_folder/SharedFolderStore.h"

#include <fcntl.h>
#include <gio/gio.h>
#include <unistd.h>

#include <cstdint>
#include <exception>
#include <utility>
#include <vector>

#include "platform/freedesktop/glib/GLibHandles.h"
#include "platform/freedesktop/glib/MainLoopSource.h"
#include "platform/freedesktop/sync_folder/FolderEvents.h"
#include "preference_sync/SharedSetCodec.h"
#include "preference_sync/SharedSetReplica.h"

namespace lumatile {

static_assert(SharedStore::largestValue == SharedSetCodec::largestValue);

namespace {

using Condition = SharedStoreStatus::Condition;
using Errand = SyncFolderVisit::Errand;
using File = SyncFolderVisit::File;

constexpr int changedByAnother = 0;
constexpr int firstContact = 1;
constexpr int noRoom = 2;
constexpr int otherLocation = 3;

constexpr const char* logType = "SharedStore";

/// The kernel's list of mounts; its descriptor tells of changes.
class MountTable {
public:
    // NOLINTNEXTLINE(*-vararg)
    MountTable() : descriptor_(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {}
    MountTable(const MountTable&) = delete;
    MountTable& operator=(const MountTable&) = delete;
    ~MountTable() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }

    int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

/// What a visit brings back; the events begin before it looked.
struct Report {
    FolderEvents events;
    SyncFolderVisit visit;
};

}  // namespace

/// Shared with the callbacks of the main loop, which hold it weakly.
class SharedFolderStore::State : public std::enable_shared_from_this<State> {
public:
    State(Preferences& preferences, SystemLog& log, Pace pace)
        : preferences_(preferences), log_(log), pace_(std::move(pace)) {}

    void begin() {
        if (mounts_.descriptor() >= 0) {
            mountChanges_ = MainLoopSource::when(mounts_.descriptor(),
                                                 static_cast<GIOCondition>(G_IO_PRI | G_IO_ERR),
                                                 [this] { visit(); });
        }
        folder_ = preferences_.bytes(folderKey);
        isFirstContact_ = preferences_.bytes(metFolderKey) != folder_;
        visit();
    }

    std::optional<Bytes> data(std::string_view key) const { return replica_.data(key); }
    bool hasBeenRead() const { return replica_.hasBeenRead(); }
    bool isVisiting() const { return isVisiting_; }

    void set(const std::optional<Bytes>& value, std::string_view key) {
        if (!folder_) {
            return;
        }
        replica_.set(value, key);
        if (!std::exchange(sendsSoon_, true)) {
            later([](State& state) {
                if (state.sendsSoon_) {
                    state.send();
                }
            });
        }
    }

    void send() {
        sendsSoon_ = false;
        if (!replica_.unsent()) {
            return;
        }
        isTooLarge_ = !SharedSetCodec::print(*replica_.unsent());
        if (isTooLarge_) {
            replica_.dropUnsent();
            log_.write(logType, "the settings are too large to be shared");
            tell(noRoom);
        } else {
            visit();
        }
    }

    SharedStoreStatus status() const {
        SharedStoreStatus status;
        status.condition = condition();
        status.location = folder_.value_or("");
        status.lastSynced = lastSynced_;
        status.failure = failure_;
        status.copiesPutAside = copiesPutAside_;
        return status;
    }

    void setLocation(const std::optional<std::string>& location) {
        if (location == folder_) {
            return;
        }
        folder_ = location;
        if (location) {
            preferences_.setBytes(folderKey, *location);
        } else {
            preferences_.remove(folderKey);
        }
        // Named by the user just now, so an empty one is meant to be begun with.
        preferences_.remove(metFolderKey);
        replica_ = {};
        found_ = Found::nothingYet;
        over_.reset();
        own_.reset();
        rest_.stop();
        lastSynced_.reset();
        failure_.clear();
        complaint_.clear();
        copiesPutAside_ = 0;
        isFirstContact_ = true;
        isTooLarge_ = false;
        hasFailedToWrite_ = false;
        overAnything_ = false;
        visitsAgain_ = false;
        patience_.stop();
        poll_.stop();
        absence_.stop();
        isLongGone_ = false;
        eventSource_.stop();
        events_.reset();
        isVisiting_ = false;  // The answer of one under way is not waited for.
        ++visits_;
        tell(otherLocation);
        visit();
    }

    void startAnew() {
        if (found_ != Found::damaged && found_ != Found::missing) {
            return;
        }
        overAnything_ = true;
        over_.reset();
        found_ = Found::here;
        replica_.found({});
        tell(firstContact);
        visit();
    }

    std::unique_ptr<SharedStoreWatch> observe(
        std::function<void(const SharedStoreChange&)> changed) {
        auto kept = std::make_shared<const Observer>(std::move(changed));
        observers_.push_back(kept);
        return std::make_unique<Watch>(std::move(kept));
    }

private:
    using Observer = std::function<void(const SharedStoreChange&)>;

    /// Keeps what is to be called.
    class Watch final : public SharedStoreWatch {
    public:
        explicit Watch(std::shared_ptr<const Observer> changed) : changed_(std::move(changed)) {}

    private:
        std::shared_ptr<const Observer> changed_;
    };

    enum class Found { nothingYet, unreachable, missing, damaged, here };

    /// One visit on its way through a worker thread, which knows the errand and nothing else.
    struct Trip {
        Errand errand;
        std::function<SyncFolderVisit(const Errand&)> visit;
    };
    struct Return {
        std::weak_ptr<State> state;
        std::uint64_t number;
    };

    template <typename Work>
    void later(Work work) {
        MainLoopSource::once([state = weak_from_this(), work] {
            if (const auto alive = state.lock()) {
                work(*alive);
            }
        });
    }

    /// Looks into the folder and writes what is to be written, as soon as no other visit is under
    /// way.
    void visit() {
        if (!folder_) {
            return;
        }
        if (isVisiting_) {
            visitsAgain_ = true;
            return;
        }
        isVisiting_ = true;
        visitsAgain_ = false;
        sendsSoon_ = false;
        Errand errand;
        errand.folder = *folder_;
        // Before it is known what lies there, nothing is written over it.
        if (replica_.unsent() && hasBeenRead()) {
            sending_ = replica_.unsent();
            errand.text = SharedSetCodec::print(*sending_);
        }
        errand.over = over_;
        errand.own = own_;
        errand.restMilliseconds = pace_.restMilliseconds;
        errand.overAnything = overAnything_;
        errand.mayBegin = isFirstContact_ || overAnything_;
        errand.knownTime = changeTime(replica_.accepted().value_or(SharedSet{}));
        travel(std::move(errand));
        patience_ = MainLoopSource::every(pace_.patienceMilliseconds, [this] {
            patience_.stop();
            found_ = Found::unreachable;
            failure_ = "no answer";
            complain("the folder " + *folder_ + " does not answer");
            tell(std::nullopt);
        });
    }

    void travel(Errand errand) {
        const GObjectHandle<GTask> task(
            g_task_new(nullptr, nullptr, haveReturned, new Return{weak_from_this(), ++visits_}));
        g_task_set_task_data(task.get(), new Trip{std::move(errand), pace_.visit},
                             [](gpointer data) { delete static_cast<Trip*>(data); });
        g_task_run_in_thread(
            task.get(), [](GTask* running, gpointer, gpointer data, GCancellable*) {
                const auto& trip = *static_cast<Trip*>(data);
                Report* report = nullptr;
                try {
                    FolderEvents events(trip.errand.folder);
                    report = new Report{std::move(events), trip.visit(trip.errand)};
                } catch (const std::exception&) {
                    // Memory ran out, or a path cannot be one; as if the folder could not be read.
                }
                g_task_return_pointer(running, report,
                                      [](gpointer result) { delete static_cast<Report*>(result); });
            });
    }

    static void haveReturned(GObject* /*source*/, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Return> back(static_cast<Return*>(data));
        // NOLINTNEXTLINE(*-reinterpret-cast): the library's classes are laid out so.
        auto* task = reinterpret_cast<GTask*>(result);
        std::unique_ptr<Report> report(
            static_cast<Report*>(g_task_propagate_pointer(task, nullptr)));
        const auto state = back->state.lock();
        if (state && back->number == state->visits_) {
            state->take(std::move(report));
        }
    }

    void take(std::unique_ptr<Report> report) {
        isVisiting_ = false;
        patience_.stop();
        if (!report) {
            found_ = Found::unreachable;
            failure_ = "out of memory";
            tell(std::nullopt);
            return;
        }
        follow(std::move(report->events));
        const SyncFolderVisit& visit = report->visit;
        failure_ = visit.readFailure.empty() ? visit.writeFailure : visit.readFailure;
        copiesPutAside_ += visit.copiesPutAside;
        if (visit.copiesPutAside > 0) {
            log_.write(logType, std::to_string(visit.copiesPutAside) +
                                    " replaced or conflicting settings files were put into " +
                                    *folder_ + "/" + SyncFolderVisit::asideName);
        }
        apply(visit);
        noteWriting(visit);
        const bool mayBeTaken = found_ == Found::here;
        if (mayBeTaken && !replica_.unsent()) {
            lastSynced_ = static_cast<double>(g_get_real_time()) / G_USEC_PER_SEC;
        }
        pollIf(visit.isRemote || pace_.alwaysPolls || hasFailedToWrite_);
        tell(std::nullopt);
        if (visit.awaitsRest) {
            rest_ = MainLoopSource::every(pace_.restMilliseconds, [this] {
                rest_.stop();
                this->visit();
            });
        }
        const bool mayWrite = mayBeTaken && !hasFailedToWrite_ && !visit.awaitsRest;
        if (visitsAgain_ || (mayWrite && replica_.unsent())) {
            this->visit();
        }
    }

    void apply(const SyncFolderVisit& visit) {
        const std::string path = *folder_ + "/" + SyncFolderVisit::fileName;
        switch (visit.file) {
            case File::unreachable:
                found_ = Found::unreachable;
                complain("the folder " + *folder_ + " cannot be read: " + visit.readFailure);
                break;
            case File::damaged:
                if (!overAnything_) {
                    found_ = Found::damaged;
                    complain(path + " is damaged or incomplete and left alone until it is whole");
                }
                break;
            case File::absent:
                if (!isFirstContact_ && !overAnything_) {
                    found_ = Found::missing;
                    noteAbsence(path);
                } else {
                    over_.reset();
                    acceptIt({});
                }
                break;
            case File::good:
                over_ = visit.text;
                if (visit.isOwn) {
                    own_ = visit.text;
                }
                overAnything_ = false;
                if (visit.hasWritten && sending_) {
                    replica_.sent(*sending_);
                }
                acceptIt(visit.set);
                if (preferences_.bytes(metFolderKey) != folder_) {
                    preferences_.setBytes(metFolderKey, *folder_);
                }
                isFirstContact_ = false;
                break;
        }
    }

    void noteAbsence(const std::string& path) {
        if (isLongGone_) {
            complain(path + " is gone, and not written anew until it is back");
        } else if (!absence_.isRunning()) {
            absence_ = MainLoopSource::every(pace_.absenceMilliseconds, [this] {
                absence_.stop();
                isLongGone_ = true;
                visit();
            });
        }
    }

    void acceptIt(const SharedSet& set) {
        found_ = Found::here;
        absence_.stop();
        isLongGone_ = false;
        if (!hasFailedToWrite_) {
            complaint_.clear();
        }
        const bool wasRead = hasBeenRead();
        const bool isNews = replica_.found(set);
        if (!wasRead) {
            tell(isFirstContact_ ? std::optional(firstContact) : std::nullopt);
        } else if (isNews) {
            tell(changedByAnother);
        }
    }

    void noteWriting(const SyncFolderVisit& visit) {
        const bool hadFailed = std::exchange(hasFailedToWrite_, !visit.writeFailure.empty());
        if (hasFailedToWrite_ && !hadFailed) {
            complain(*folder_ + "/" + SyncFolderVisit::fileName +
                     " cannot be written: " + visit.writeFailure);
            tell(noRoom);
        }
    }

    /// Replaces what has been listened to by the newer queue.
    void follow(FolderEvents events) {
        eventSource_.stop();
        events_ = std::make_unique<FolderEvents>(std::move(events));
        if (events_->descriptor() >= 0) {
            eventSource_ = MainLoopSource::when(events_->descriptor(), G_IO_IN, [this] {
                if (events_->consume()) {
                    visit();
                }
            });
        }
    }

    void pollIf(bool needed) {
        if (!needed) {
            poll_.stop();
        } else if (!poll_.isRunning()) {
            poll_ = MainLoopSource::every(pace_.pollMilliseconds, [this] { visit(); });
        }
    }

    Condition condition() const {
        if (!folder_) {
            return Condition::noLocation;
        }
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
        if (replica_.unsent()) {
            return hasFailedToWrite_ ? Condition::notWritable : Condition::sending;
        }
        return isTooLarge_ ? Condition::tooLarge : Condition::current;
    }

    /// One line for as long as it stays so.
    void complain(const std::string& complaint) {
        if (complaint != complaint_) {
            complaint_ = complaint;
            log_.write(logType, complaint);
        }
    }

    void tell(std::optional<int> reasonCode) {
        std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
        for (const auto& observer : observers_) {
            MainLoopSource::once([observer, reasonCode] {
                if (const auto changed = observer.lock()) {
                    (*changed)({reasonCode});
                }
            });
        }
    }

    Preferences& preferences_;
    SystemLog& log_;
    Pace pace_;
    MountTable mounts_;
    MainLoopSource mountChanges_;
    std::optional<std::string> folder_;
    SharedSetReplica replica_;
    std::optional<SharedSet> sending_;  ///< Of the visit under way.
    std::optional<std::string> over_;   ///< The file's text as it was read last.
    std::optional<std::string> own_;    ///< That this program wrote last.
    Found found_ = Found::nothingYet;
    std::optional<double> lastSynced_;
    std::string failure_;
    std::string complaint_;
    std::size_t copiesPutAside_ = 0;
    bool isFirstContact_ = true;
    bool isTooLarge_ = false;
    bool hasFailedToWrite_ = false;
    bool overAnything_ = false;
    bool isLongGone_ = false;
    bool sendsSoon_ = false;
    bool isVisiting_ = false;
    bool visitsAgain_ = false;
    std::uint64_t visits_ = 0;  ///< The number of the one that is waited for.
    MainLoopSource patience_;
    MainLoopSource poll_;
    MainLoopSource absence_;
    MainLoopSource rest_;
    std::unique_ptr<FolderEvents> events_;
    MainLoopSource eventSource_;
    std::vector<std::weak_ptr<const Observer>> observers_;
};

SharedFolderStore::SharedFolderStore(Preferences& preferences, SystemLog& log)
    : SharedFolderStore(preferences, log, Pace()) {}

SharedFolderStore::SharedFolderStore(Preferences& preferences, SystemLog& log, Pace pace)
    : state_(std::make_shared<State>(preferences, log, std::move(pace))) {
    state_->begin();
}

SharedFolderStore::~SharedFolderStore() = default;

std::optional<Bytes> SharedFolderStore::data(std::string_view key) { return state_->data(key); }

void SharedFolderStore::set(const std::optional<Bytes>& value, std::string_view key) {
    state_->set(value, key);
}

void SharedFolderStore::synchronize() { state_->send(); }

bool SharedFolderStore::hasBeenRead() { return state_->hasBeenRead(); }

bool SharedFolderStore::isVisiting() const { return state_->isVisiting(); }

SharedStoreStatus SharedFolderStore::status() { return state_->status(); }

void SharedFolderStore::setLocation(const std::optional<std::string>& location) {
    state_->setLocation(location);
}

void SharedFolderStore::startAnew() { state_->startAnew(); }

std::unique_ptr<SharedStoreWatch> SharedFolderStore::observe(
    std::function<void(const SharedStoreChange&)> changed) {
    return state_->observe(std::move(changed));
}

}  // namespace lumatile
