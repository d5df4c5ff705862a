#include "platform/qt/StatusNotifierHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QString>

#include <utility>

namespace lumatile {

namespace {

// The watcher's name, which is its interface's too, and its object.
QString watcherName() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }
QString watcherPath() { return QStringLiteral("/StatusNotifierWatcher"); }

}  // namespace

StatusNotifierHost::StatusNotifierHost(std::function<void()> appeared)
    : bus_(QDBusConnection::sessionBus()), appeared_(std::move(appeared)) {
    if (!bus_.isConnected()) {
        return;
    }
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher_.addWatchedService(watcherName());
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*service*/, const QString& /*oldOwner*/,
                   const QString& newOwner) { watcherChanged(newOwner); });
    for (const char* change : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus_.connect(watcherName(), watcherPath(), watcherName(), QLatin1String(change), this,
                     SLOT(ask()));
    }
    ask();
}

void StatusNotifierHost::watcherChanged(const QString& newOwner) {
    if (newOwner.isEmpty()) {
        isPresent_ = false;
    } else {
        ask();
    }
}

void StatusNotifierHost::ask() {
    QDBusMessage question = QDBusMessage::createMethodCall(
        watcherName(), watcherPath(), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    question << watcherName() << QStringLiteral("IsStatusNotifierHostRegistered");
    // A session without a bar should not get one started by this.
    question.setAutoStartService(false);
    auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply(*answer);
        answer->deleteLater();
        const bool wasPresent = isPresent_;
        isPresent_ = reply.isValid() && reply.value().variant().toBool();
        if (isPresent_ && !wasPresent) {
            appeared_();
        }
    });
}

}  // namespace lumatile
