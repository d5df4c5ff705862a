#include "tests/desktop/support/StatusBar.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/EventWait.h"

namespace lumatile::desktop {
namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

QString nextConnectionName() {
    static int number = 0;
    return QStringLiteral("bar-%1").arg(++number);
}

/// The children of the node that `argument` stands at: (ia{sv}av).
std::vector<ExportedItem> childrenOf(const QDBusArgument& argument) {
    std::vector<ExportedItem> items;
    int id = 0;
    QVariantMap properties;
    QVariantList children;
    argument.beginStructure();
    argument >> id >> properties >> children;
    argument.endStructure();
    for (const QVariant& child : children) {
        const auto node = child.value<QDBusArgument>();
        ExportedItem item;
        QVariantList nested;
        node.beginStructure();
        node >> item.id >> item.properties >> nested;
        node.endStructure();
        items.push_back(item);
    }
    return items;
}

}  // namespace

std::string ExportedItem::keys() const {
    const QVariant shortcut = properties.value("shortcut");
    if (!shortcut.isValid()) {
        return {};
    }
    QStringList keys;
    const auto argument = shortcut.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QStringList combination;
        argument >> combination;
        keys += combination;
    }
    argument.endArray();
    return keys.join('+').toStdString();
}

class StatusBar::Watcher final : public QDBusVirtualObject {
public:
    explicit Watcher(bool host) : hasHost(host) {}

    QString introspect(const QString& /*path*/) const override {
        return QStringLiteral(
            "<interface name=\"org.kde.StatusNotifierWatcher\">"
            "<method name=\"RegisterStatusNotifierItem\">"
            "<arg name=\"service\" type=\"s\" direction=\"in\"/></method>"
            "<property name=\"IsStatusNotifierHostRegistered\" type=\"b\" access=\"read\"/>"
            "<property name=\"ProtocolVersion\" type=\"i\" access=\"read\"/>"
            "<signal name=\"StatusNotifierHostRegistered\"/>"
            "</interface>");
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.interface() == propertiesInterface && message.member() == "Get") {
            const QString name = message.arguments().value(1).toString();
            const QVariant value =
                name == "IsStatusNotifierHostRegistered" ? QVariant(hasHost) : QVariant(0);
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
        }
        if (message.member() == "RegisterStatusNotifierItem") {
            const QString service = message.arguments().value(0).toString();
            items.push_back(service.startsWith('/') ? message.service() : service);
            return connection.send(message.createReply());
        }
        return false;
    }

    bool hasHost;
    std::vector<QString> items;
};

StatusBar::StatusBar(const std::string& address, bool hasHost)
    : connectionName_(nextConnectionName()),
      bus_(QDBusConnection::connectToBus(QString::fromStdString(address), connectionName_)),
      watcher_(std::make_unique<Watcher>(hasHost)) {
    if (!bus_.isConnected() || !bus_.registerVirtualObject(watcherPath, watcher_.get()) ||
        !bus_.registerService(watcherName)) {
        throw DesktopError("no status bar on " + address);
    }
}

StatusBar::~StatusBar() {
    bus_.unregisterService(watcherName);
    bus_.unregisterObject(watcherPath);
    QDBusConnection::disconnectFromBus(connectionName_);
}

void StatusBar::addHost() {
    watcher_->hasHost = true;
    bus_.send(QDBusMessage::createSignal(watcherPath, watcherName, "StatusNotifierHostRegistered"));
}

const std::vector<QString>& StatusBar::items() const { return watcher_->items; }

QString StatusBar::waitForItem() {
    return waitForEvents([&] { return !items().empty(); }) ? items().front() : QString();
}

QDBusMessage StatusBar::call(const QString& item, const QString& path, const QString& interface,
                             const QString& member, const QVariantList& arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(item, path, interface, member);
    message.setArguments(arguments);
    // The program may ask the watcher meanwhile. The toolkit's own way to handle events during a
    // call never ends where the reply is there before it has begun to wait.
    const QDBusPendingCallWatcher answer(bus_.asyncCall(message));
    waitForEvents([&] { return answer.isFinished(); });
    return answer.reply();
}

QVariant StatusBar::property(const QString& item, const QString& name) const {
    const QDBusMessage reply =
        call(item, "/StatusNotifierItem", propertiesInterface, "Get", {itemInterface, name});
    return reply.type() == QDBusMessage::ReplyMessage
               ? reply.arguments().value(0).value<QDBusVariant>().variant()
               : QVariant();
}

std::string StatusBar::toolTip(const QString& item) const {
    const auto argument = property(item, "ToolTip").value<QDBusArgument>();
    if (argument.currentType() != QDBusArgument::StructureType) {
        return {};
    }
    QString icon;
    QString title;
    argument.beginStructure();
    argument >> icon;
    argument.beginArray();
    while (!argument.atEnd()) {
        argument.asVariant();
    }
    argument.endArray();
    argument >> title;
    argument.endStructure();
    return title.toStdString();
}

QByteArray StatusBar::picture(const QString& item, int extent) const {
    const auto argument = property(item, "IconPixmap").value<QDBusArgument>();
    if (argument.currentType() != QDBusArgument::ArrayType) {
        return {};
    }
    QByteArray found;
    int best = 0;
    argument.beginArray();
    while (!argument.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray bytes;
        argument.beginStructure();
        argument >> width >> height >> bytes;
        argument.endStructure();
        if (width >= extent && (best == 0 || width < best)) {
            best = width;
            found = bytes;
        }
    }
    argument.endArray();
    return found;
}

bool StatusBar::connect(const QString& item, const QString& signal, QObject* receiver,
                        const char* slot) {
    return bus_.connect(item, "/StatusNotifierItem", itemInterface, signal, receiver, slot);
}

bool StatusBar::activate(const QString& item) const {
    return call(item, "/StatusNotifierItem", itemInterface, "Activate", {0, 0}).type() ==
           QDBusMessage::ReplyMessage;
}

std::vector<ExportedItem> StatusBar::menu(const QString& item) const {
    const QDBusMessage reply =
        call(item, "/MenuBar", menuInterface, "GetLayout", {0, -1, QStringList()});
    return reply.type() == QDBusMessage::ReplyMessage
               ? childrenOf(reply.arguments().value(1).value<QDBusArgument>())
               : std::vector<ExportedItem>();
}

std::optional<ExportedItem> StatusBar::find(const QString& item, const std::string& label) const {
    for (const ExportedItem& each : menu(item)) {
        if (each.label() == label) {
            return each;
        }
    }
    return std::nullopt;
}

bool StatusBar::open(const QString& item) const {
    return call(item, "/MenuBar", menuInterface, "AboutToShow", {0}).type() ==
           QDBusMessage::ReplyMessage;
}

void StatusBar::click(const QString& item, int id) const {
    QDBusMessage message = QDBusMessage::createMethodCall(item, "/MenuBar", menuInterface, "Event");
    message << id << QStringLiteral("clicked") << QVariant::fromValue(QDBusVariant(0)) << 0U;
    bus_.send(message);
}

}  // namespace lumatile::desktop
