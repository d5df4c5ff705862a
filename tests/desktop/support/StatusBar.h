#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumatile::desktop {

/// An item of a menu as a program exports it.
struct ExportedItem {
    int id = 0;
    QVariantMap properties;

    std::string label() const { return properties.value("label").toString().toStdString(); }
    bool isEnabled() const { return properties.value("enabled", true).toBool(); }
    bool isSeparator() const { return properties.value("type").toString() == "separator"; }
    /// "Control+Alt+Left", empty without keys.
    std::string keys() const;
};

/// A bar on a session bus that programs register their status items with: the watcher and the host
/// in one. Has a connection of its own, so that it comes and goes like a program.
class StatusBar {
public:
    /// @param address of the bus
    /// @param hasHost false: the watcher alone, as while a desktop starts
    explicit StatusBar(const std::string& address, bool hasHost = true);
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;

    /// Leaves the bus.
    ~StatusBar();

    /// A host comes to the watcher.
    void addHost();

    /// The bus names of the programs that registered an item, in order.
    const std::vector<QString>& items() const;

    /// Waits for an item.
    /// @return the bus name of the first; empty when none comes in time
    QString waitForItem();

    /// A property of an item; invalid when it does not answer.
    QVariant property(const QString& item, const QString& name) const;

    /// The text that shows under the pointer.
    std::string toolTip(const QString& item) const;

    /// The picture of the smallest size of at least `extent` pixels, as bytes; empty for none.
    QByteArray picture(const QString& item, int extent) const;

    /// Calls a slot of `receiver` at each signal of that name from an item.
    bool connect(const QString& item, const QString& signal, QObject* receiver, const char* slot);

    /// Clicks on the item with the first button.
    bool activate(const QString& item) const;

    /// The menu, top to bottom.
    std::vector<ExportedItem> menu(const QString& item) const;

    /// The item of that label; absent when there is none.
    std::optional<ExportedItem> find(const QString& item, const std::string& label) const;

    /// Tells the program that the user is about to see the menu, as hosts do.
    bool open(const QString& item) const;

    /// Chooses an item of the menu. Does not wait.
    void click(const QString& item, int id) const;

private:
    class Watcher;

    QDBusMessage call(const QString& item, const QString& path, const QString& interface,
                      const QString& member, const QVariantList& arguments) const;

    QString connectionName_;
    QDBusConnection bus_;
    std::unique_ptr<Watcher> watcher_;
};

}  // namespace lumatile::desktop
