#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "Lumatile/widgets/Saying.h"
#include "ports/RunLoop.h"
#include "ports/SyncConflictPresenting.h"

class QDialog;

namespace lumatile {

class SyncConflictView;

/// The conflict window.
class SyncConflictWindow final : public SyncConflictPresenting {
public:
    /// @param runLoop outlives the window
    SyncConflictWindow(RunLoop& runLoop, const Saying& say, std::function<void(bool)> choose,
                       std::function<void()> closed);
    SyncConflictWindow(const SyncConflictWindow&) = delete;
    SyncConflictWindow& operator=(const SyncConflictWindow&) = delete;
    ~SyncConflictWindow() override;

    void show(const ConflictSummary& summary, const ConflictDifferences& differences) override;

    QDialog& window() { return *window_; }

private:
    SyncConflictView* view_;  ///< The window's.
    std::unique_ptr<QDialog> window_;
};

/// Makes conflict windows.
class SyncConflictWindowMaker final : public SyncConflictPresenter {
public:
    /// @param runLoop outlives every window
    SyncConflictWindowMaker(RunLoop& runLoop, Saying say)
        : runLoop_(runLoop), say_(std::move(say)) {}

    std::unique_ptr<SyncConflictPresenting> make(std::function<void(bool)> choose,
                                                 std::function<void()> closed) override {
        return std::make_unique<SyncConflictWindow>(runLoop_, say_, std::move(choose),
                                                    std::move(closed));
    }

private:
    RunLoop& runLoop_;
    Saying say_;
};

}  // namespace lumatile
