#include "Lumatile/conflict/SyncConflictWindow.h"

#include <QLayout>
#include <QSize>

#include <utility>

#include "Lumatile/conflict/SyncConflictTexts.h"
#include "Lumatile/conflict/SyncConflictView.h"
#include "Lumatile/widgets/PromptDialog.h"
#include "Lumatile/widgets/WindowForeground.h"

namespace lumatile {

namespace {

constexpr QSize contentPoints(520, 280);

}  // namespace

SyncConflictWindow::SyncConflictWindow(RunLoop& runLoop, const Saying& say,
                                       std::function<void(bool)> choose,
                                       std::function<void()> closed)
    // Whoever is told lets go of the window, which must not happen while its button is still being
    // pressed.
    : view_(new SyncConflictView(say,
                                 [&runLoop, choose = std::move(choose)](bool preferLocal) {
                                     runLoop.post([choose, preferLocal] { choose(preferLocal); });
                                 })),
      window_(makePromptDialog(say(SyncConflictTexts::windowTitle), view_, contentPoints, runLoop,
                               std::move(closed))) {}

SyncConflictWindow::~SyncConflictWindow() = default;

void SyncConflictWindow::show(const ConflictSummary& summary,
                              const ConflictDifferences& differences) {
    view_->show(summary, differences);
    // Much that differs takes more lines than there is room for.
    const int needed = window_->layout()->totalHeightForWidth(window_->width());
    if (needed > window_->height()) {
        window_->resize(window_->width(), needed);
    }
    bringToFront(*window_);
}

}  // namespace lumatile
