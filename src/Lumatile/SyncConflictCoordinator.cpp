#include "Lumatile/SyncConflictCoordinator.h"

#include <utility>

namespace lumatile {

SyncConflictCoordinator::SyncConflictCoordinator(SyncConflictPresenter& presenter)
    : presenter_(presenter) {}

SyncConflictCoordinator::~SyncConflictCoordinator() = default;

void SyncConflictCoordinator::present(const ConflictSummary& summary, Completion completion,
                                      const ConflictDifferences& differences) {
    completion_ = std::move(completion);
    if (!window_) {
        window_ =
            presenter_.make(lifeline_.guard([this](bool preferLocal) { choose(preferLocal); }),
                            lifeline_.guard([this] { dismiss(); }));
    }
    window_->show(summary, differences);
}

void SyncConflictCoordinator::choose(bool preferLocal) {
    // Both out of the fields first: the completion may present the next conflict.
    const Completion completion = std::exchange(completion_, nullptr);
    window_.reset();
    if (completion) {
        completion(preferLocal);
    }
}

void SyncConflictCoordinator::dismiss() {
    completion_ = nullptr;
    window_.reset();
}

}  // namespace lumatile
