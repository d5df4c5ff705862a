#include "platform/freedesktop/bus/SessionBusInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVirtualObject>
#include <QMetaObject>
#include <QString>

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "platform/freedesktop/bus/DisplayToken.h"

namespace lumatile {

namespace {

constexpr int answerMilliseconds = 5000;

QString interfaceName() { return QStringLiteral("org.lumatile.Lumatile"); }
QString objectPath() { return QStringLiteral("/org/lumatile/Lumatile"); }

/// Whether the session states a bus. Where it does not, asking for one would start one.
bool hasSessionBus() {
    const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address != nullptr && *address != '\0') {
        return true;
    }
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    std::error_code error;
    return folder != nullptr && *folder != '\0' &&
           std::filesystem::exists(std::filesystem::path(folder) / "bus", error);
}

}  // namespace

class SessionBusInstance::Object final : public QDBusVirtualObject {
public:
    explicit Object(std::function<void()> openSettings) : openSettings_(std::move(openSettings)) {}

    QString introspect(const QString& /*path*/) const override {
        return QStringLiteral(
            "<interface name=\"org.lumatile.Lumatile\"><method "
            "name=\"OpenSettings\"/></interface>");
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.interface() != interfaceName() ||
            message.member() != QLatin1String("OpenSettings") || !message.arguments().isEmpty()) {
            return false;
        }
        // The answer does not wait for the window.
        connection.send(message.createReply());
        QMetaObject::invokeMethod(
            this, [this] { openSettings_(); }, Qt::QueuedConnection);
        return true;
    }

private:
    std::function<void()> openSettings_;
};

SessionBusInstance::SessionBusInstance(std::string_view display, std::function<void()> openSettings)
    : name_("org.lumatile.Lumatile." + displayToken(display)),
      object_(std::make_unique<Object>(std::move(openSettings))) {}

SessionBusInstance::~SessionBusInstance() {
    if (!hasSessionBus()) {
        return;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        bus.unregisterService(QString::fromStdString(name_));
        bus.unregisterObject(objectPath());
    }
}

InstanceClaim SessionBusInstance::claim() {
    if (!hasSessionBus()) {
        return InstanceClaim::unavailable;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    // Before the name, so that nobody finds the one without the other.
    if (!bus.isConnected() || !bus.registerVirtualObject(objectPath(), object_.get())) {
        return InstanceClaim::unavailable;
    }
    const QString name = QString::fromStdString(name_);
    // The other one may end between the two questions; then the name is free.
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (bus.registerService(name)) {
            return InstanceClaim::first;
        }
        QDBusMessage question = QDBusMessage::createMethodCall(name, objectPath(), interfaceName(),
                                                               QStringLiteral("OpenSettings"));
        question.setAutoStartService(false);
        const QDBusMessage answer = bus.call(question, QDBus::Block, answerMilliseconds);
        if (answer.type() == QDBusMessage::ReplyMessage) {
            return InstanceClaim::second;
        }
        if (QDBusError(answer).type() != QDBusError::ServiceUnknown) {
            break;
        }
    }
    return InstanceClaim::unreachable;
}

}  // namespace lumatile
