#pragma once

#include <functional>
#include <memory>

#include "preference_sync/ConflictDifferences.h"
#include "preference_sync/ConflictSummary.h"

namespace lumatile {

/// The window that asks which copy of the settings is kept. It is gone with this object.
class SyncConflictPresenting {
public:
    virtual ~SyncConflictPresenting() = default;

    /// Shows `summary` and `differences` in it, and the window in front of the others.
    virtual void show(const ConflictSummary& summary, const ConflictDifferences& differences) = 0;
};

/// Port: makes the conflict window.
class SyncConflictPresenter {
public:
    virtual ~SyncConflictPresenter() = default;

    /// @param choose runs with the user's choice: true keeps this computer's copy. The window may
    /// be
    ///   destroyed in it, as in `closed`
    /// @param closed runs when the user closes the window without a choice
    virtual std::unique_ptr<SyncConflictPresenting> make(std::function<void(bool)> choose,
                                                         std::function<void()> closed) = 0;
};

}  // namespace lumatile
