// The settings window alone, with the real keyboard, so that it can be worked with a real mouse and
// real keys. Does as it is told, a line each, and says what became of it on its output:
//   section NAME    shows a section            select INDEX   selects a command
//   where NAME      says "at NAME X Y", the middle of a control, root coordinates
//   add             adds an area of the user's
//   refuse INDEX …  another program has the shortcuts of these commands
//   least           makes the window as small as it gets
//   field           says "field W H", the size of the recorder in points of the toolkit, if all of
//                   it shows
//   picture FILE    saves what the window looks like and says "saved"
// Says "recording 0" or "1", and "shortcut CODE MODIFIERS", with "off" behind it when it is,
// whenever that of the selected command is another, and "refused, REASON". Ends with its input.
//   settings_program DESCRIPTOR

#include <QAccessible>
#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

#include <unistd.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "Lumatile/LaunchAtLogin.h"
#include "Lumatile/Updater.h"
#include "Lumatile/settings/SettingsWindowController.h"
#include "Lumatile/settings/ShortcutRecorderView.h"
#include "commands/BuiltInCommands.h"
#include "onboarding/Vocabulary.h"
#include "platform/freedesktop/process/StandardErrorLog.h"
#include "platform/freedesktop/sync_folder/SharedFolderStore.h"
#include "platform/qt/QSettingsPreferences.h"
#include "platform/qt/QtRunLoop.h"
#include "platform/x11/X11Session.h"
#include "ports/DesktopTiling.h"
#include "ports/LoginItem.h"
#include "ports/UpdateController.h"

namespace {

using namespace lumatile;

struct NoTiling final : DesktopTiling {
    int majorVersion() override { return 0; }
    std::optional<bool> lookup(std::string_view /*key*/) override { return std::nullopt; }
    bool canOpenSettings() override { return false; }
    bool openSettings() override { return false; }
    bool canSwitchOff() override { return false; }
    bool switchOff() override { return false; }
};

struct NoLogin final : LoginItem {
    Status status() override { return Status::notRegistered; }
    std::optional<std::string> registerItem() override { return "not here"; }
    std::optional<std::string> unregisterItem() override { return std::nullopt; }
};

struct NoUpdates final : UpdateController {
    void start() override {}
    void checkForUpdates() override {}
    bool automaticallyChecksForUpdates() override { return false; }
    void setAutomaticallyChecksForUpdates(bool /*checks*/) override {}
};

void sayWhere(QWidget& window, const std::string& name) {
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(widget);
        if (widget->isVisible() && seen != nullptr &&
            seen->text(QAccessible::Name).toStdString() == name) {
            const QPointF middle =
                QPointF(widget->mapToGlobal(widget->rect().center())) * widget->devicePixelRatio();
            std::cout << "at " << name << ' ' << static_cast<int>(middle.x()) << ' '
                      << static_cast<int>(middle.y()) << std::endl;
            return;
        }
    }
    std::cout << "there is no " << name << std::endl;
}

void sayFieldSize(QWidget& window) {
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (dynamic_cast<RecorderField*>(widget) != nullptr && widget->isVisible() &&
            widget->visibleRegion() == widget->rect()) {
            std::cout << "field " << widget->width() << ' ' << widget->height() << std::endl;
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto present = X11Session::find();
    if (argc != 2 || !present) {
        return EXIT_FAILURE;
    }
    const int input = std::atoi(argv[1]);
    const QApplication application(argc, argv);
    QtRunLoop runLoop;
    StandardErrorLog log;
    const DesktopSession session = present->enter(runLoop, log);
    QSettingsPreferences preferences(log, runLoop);
    SharedFolderStore sharedStore(preferences, log);
    NoTiling tiling;
    NoLogin login;
    LaunchAtLogin launchAtLogin(login, log);
    Updater updater([] { return std::make_shared<NoUpdates>(); }, [] {});
    const Vocabulary vocabulary = Vocabulary::of({});
    const auto model =
        std::make_shared<SettingsViewModel>(BuiltInCommands::defaults(), OLEDSettings::recommended);
    model->onRecording = [](bool isRecording) {
        std::cout << "recording " << (isRecording ? 1 : 0) << std::endl;
    };
    std::optional<Shortcut> told;
    const auto observation = model->observe([&] {
        const SnapCommand* selected = model->selected();
        const auto shortcut = selected != nullptr ? selected->shortcut : std::nullopt;
        if (shortcut && shortcut != told) {
            std::cout << "shortcut " << shortcut->carbonKeyCode << ' ' << shortcut->carbonModifiers
                      << (shortcut->enabled ? "" : " off") << std::endl;
        }
        told = shortcut;
        if (const auto& refusal = model->refusal()) {
            static constexpr std::array reasons{"bare key", "taken", "no code"};
            std::cout << "refused, " << reasons.at(static_cast<std::size_t>(refusal->reason))
                      << std::endl;
        }
    });
    SettingsWindowController controller(
        model,
        {session.keyCodes,
         preferences,
         launchAtLogin,
         updater,
         tiling,
         sharedStore,
         runLoop,
         [&](std::string_view text) { return QString::fromStdString(vocabulary.apply(text)); },
         "1.0",
         {},
         [&] { return model->commands(); },
         [](const SnapCommand&) {},
         [] { QApplication::quit(); }});
    controller.show();

    const auto carryOut = [&](const std::string& line) {
        const std::size_t blank = line.find(' ');
        const std::string order = line.substr(0, blank);
        const std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
        if (order == "section") {
            model->setSection(settingsSectionFromRawValue(rest).value_or(SettingsSection::general));
        } else if (order == "select") {
            model->select(model->commands().at(std::stoul(rest)).id);
        } else if (order == "add") {
            model->addCustomArea();
        } else if (order == "refuse") {
            std::vector<UUID> refused;
            std::istringstream indexes(rest);
            for (std::size_t index = 0; indexes >> index;) {
                refused.push_back(model->commands().at(index).id);
            }
            model->setRefusedShortcuts(refused);
        } else if (order == "least") {
            controller.window().resize(controller.window().minimumSize());
        } else if (order == "field") {
            QApplication::processEvents();
            sayFieldSize(controller.window());
        } else if (order == "where") {
            QApplication::processEvents();  // What the last line changed is laid out first.
            sayWhere(controller.window(), rest);
        } else if (order == "picture") {
            QApplication::processEvents();
            controller.window().grab().save(QString::fromStdString(rest));
            std::cout << "saved" << std::endl;
        }
    };
    std::string read;
    const auto watch = runLoop.watchDescriptor(input, [&] {
        std::array<char, 256> part{};
        const auto count = ::read(input, part.data(), part.size());
        if (count <= 0) {
            QApplication::quit();
            return;
        }
        read.append(part.data(), static_cast<std::size_t>(count));
        for (auto end = read.find('\n'); end != std::string::npos; end = read.find('\n')) {
            const std::string line = read.substr(0, end);
            read.erase(0, end + 1);
            carryOut(line);
        }
    });
    const auto events = runLoop.watchDescriptor(session.events.descriptor, session.events.dispatch);
    const auto beforeBlocking = runLoop.beforeBlocking(session.events.dispatch);
    return QApplication::exec();
}
