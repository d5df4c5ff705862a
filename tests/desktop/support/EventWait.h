#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <functional>

namespace lumatile::desktop {

/// Handles what arrives until `condition` holds.
/// @return false when it does not hold in time
inline bool waitForEvents(const std::function<bool()>& condition) {
    constexpr std::chrono::seconds patience(20);
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(patience);
    while (!condition()) {
        if (!limit.isActive()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

}  // namespace lumatile::desktop
