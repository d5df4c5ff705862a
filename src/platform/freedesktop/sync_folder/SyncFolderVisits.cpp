#include "platform/freedesktop/sync_folder/SyncFolderVisits.h"

#include <gio/gio.h>

#include <exception>
#include <utility>

#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile {

/// One visit on its way through a worker thread, which knows the errand and nothing else.
struct SyncFolderVisits::Trip {
    Errand errand;
    std::function<SyncFolderVisit(const Errand&)> look;

    static void release(gpointer data) { delete static_cast<Trip*>(data); }
    static void releaseReport(gpointer data) { delete static_cast<Report*>(data); }

    /// On the worker's thread.
    static void run(GTask* task, gpointer /*source*/, gpointer data, GCancellable* /*none*/) {
        const auto& trip = *static_cast<Trip*>(data);
        Report* report = nullptr;
        try {
            FolderEvents events(trip.errand.folder);
            report = new Report{std::move(events), trip.look(trip.errand)};
        } catch (const std::exception&) {
            // Memory ran out, or a path cannot be one; as if the folder could not be read.
        }
        g_task_return_pointer(task, report, releaseReport);
    }

    static void returned(GObject* /*source*/, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<std::weak_ptr<Current>> waiting(
            static_cast<std::weak_ptr<Current>*>(data));
        // NOLINTNEXTLINE(*-reinterpret-cast): the library's classes are laid out so.
        auto* task = reinterpret_cast<GTask*>(result);
        std::unique_ptr<Report> report(
            static_cast<Report*>(g_task_propagate_pointer(task, nullptr)));
        if (const auto current = waiting->lock()) {
            current->visits.take(std::move(report));
        }
    }
};

SyncFolderVisits::SyncFolderVisits(Parts parts) : parts_(std::move(parts)) {}

void SyncFolderVisits::visit() {
    if (isVisiting()) {
        isWantedAgain_ = true;
    } else {
        begin();
    }
}

void SyncFolderVisits::forget() {
    current_.reset();
    isWantedAgain_ = false;
}

void SyncFolderVisits::begin() {
    isWantedAgain_ = false;
    current_ = std::make_shared<Current>(Current{*this, {}});
    const GObjectHandle<GTask> task(
        g_task_new(nullptr, nullptr, Trip::returned, new std::weak_ptr<Current>(current_)));
    g_task_set_task_data(task.get(), new Trip{parts_.errand(), parts_.look}, Trip::release);
    g_task_run_in_thread(task.get(), Trip::run);
    current_->patience = MainLoopSource::every(parts_.patienceMilliseconds, [this] {
        current_->patience.stop();
        parts_.unanswered();
    });
}

void SyncFolderVisits::take(std::unique_ptr<Report> report) {
    current_.reset();
    parts_.back(std::move(report));
    if (isWantedAgain_ && !isVisiting()) {
        begin();
    }
}

}  // namespace lumatile
