#pragma once

#include <QDialog>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

#include "ports/RunLoop.h"

namespace lumatile {

/// The window of a question or an explanation, in the appearance of the settings and in the middle
/// of the primary screen; Escape and Ctrl+W close it.
/// @param content taken over
/// @param contentPoints its size where text is not enlarged; at most the screen's
/// @param closed runs from the run loop, which outlives the window, after the user has closed it:
///     whoever is told may let go of the window
std::unique_ptr<QDialog> makePromptDialog(const QString& title, QWidget* content,
                                          const QSize& contentPoints, RunLoop& runLoop,
                                          std::function<void()> closed);

}  // namespace lumatile
