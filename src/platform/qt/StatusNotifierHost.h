#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>

namespace lumatile {

/// Whether a bar that shows status items over the session bus is there. Asks without waiting.
class StatusNotifierHost final : public QObject {
    Q_OBJECT

public:
    /// @param appeared runs on the run loop each time when a host has come
    explicit StatusNotifierHost(std::function<void()> appeared);

    /// False until the first answer has come.
    bool isPresent() const { return isPresent_; }

    /// Looks again; the bus calls it when the watcher tells of a change.
    Q_SLOT void ask();

private:
    void watcherChanged(const QString& newOwner);

    QDBusConnection bus_;
    std::function<void()> appeared_;
    QDBusServiceWatcher watcher_;
    bool isPresent_ = false;
};

}  // namespace lumatile
