#pragma once

#include <functional>
#include <memory>

#include "base/Lifeline.h"
#include "ports/SyncConflictPresenting.h"
#include "preference_sync/ConflictDifferences.h"
#include "preference_sync/ConflictSummary.h"

namespace lumatile {

/// Lets the user choose between two copies of the settings that both changed.
class SyncConflictCoordinator {
public:
    using Completion = std::function<void(bool preferLocal)>;

    /// @param presenter outlives the coordinator
    explicit SyncConflictCoordinator(SyncConflictPresenter& presenter);
    SyncConflictCoordinator(const SyncConflictCoordinator&) = delete;
    SyncConflictCoordinator& operator=(const SyncConflictCoordinator&) = delete;
    ~SyncConflictCoordinator();

    /// Shows the window with `summary`; while it is shown already, that one from now on.
    /// @param completion runs once, after the window is gone, with the user's choice; never when
    /// the window is closed without one, nor when another conflict is presented before
    /// @param differences what the copies differ in, as far as that is known
    void present(const ConflictSummary& summary, Completion completion,
                 const ConflictDifferences& differences = {});

    bool hasWindow() const { return window_ != nullptr; }

private:
    void choose(bool preferLocal);
    void dismiss();

    SyncConflictPresenter& presenter_;
    Completion completion_;
    std::unique_ptr<SyncConflictPresenting> window_;
    Lifeline lifeline_;  // A window may outlive this.
};

}  // namespace lumatile
