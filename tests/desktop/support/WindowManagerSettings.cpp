#include "tests/desktop/support/WindowManagerSettings.h"

#include <array>
#include <filesystem>
#include <fstream>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {
namespace {

void writeFile(const std::filesystem::path& file, const std::string& text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) {
        throw DesktopError("cannot write " + file.string());
    }
}

WindowManagerStart prepareOpenbox(const PrivateSession& session,
                                  const WindowManager::Options& options) {
    // The packaged settings, so that everything but the keys is as users have it.
    std::string settings = readFile("/etc/xdg/openbox/rc.xml");
    const std::string opening = "<keyboard>";
    const std::string closing = "</keyboard>";
    const std::size_t from = settings.find(opening);
    const std::size_t to = settings.find(closing);
    if (from == std::string::npos || to == std::string::npos) {
        throw DesktopError("openbox has no packaged settings");
    }
    if (!options.ownBindings) {
        settings.erase(from + opening.size(), to - from - opening.size());
    }
    const std::filesystem::path file = session.configuration() / "openbox" / "rc.xml";
    writeFile(file, settings);
    return {{"openbox", "--sm-disable", "--config-file", file.string()}, {}};
}

WindowManagerStart prepareXfwm4(const PrivateSession& session,
                                const WindowManager::Options& options) {
    if (!options.ownBindings) {
        // "override" makes the custom list replace the default one. What remains is the key that
        // takes back a move, which counts only in the middle of one.
        writeFile(session.configuration() / "xfce4" / "xfconf" / "xfce-perchannel-xml" /
                      "xfce4-keyboard-shortcuts.xml",
                  R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-keyboard-shortcuts" version="1.0">
  <property name="xfwm4" type="empty">
    <property name="custom" type="empty">
      <property name="override" type="bool" value="true"/>
      <property name="Escape" type="string" value="cancel_key"/>
    </property>
  </property>
</channel>
)");
    }
    return {{"xfwm4", options.compositing ? "--compositor=on" : "--compositor=off",
             "--sm-client-disable"},
            {}};
}

WindowManagerStart prepareMetacity(const PrivateSession& session,
                                   const WindowManager::Options& options) {
    std::string text;
    if (!options.ownBindings) {
        static constexpr std::array keys{"switch-to-workspace-left",
                                         "switch-to-workspace-right",
                                         "switch-to-workspace-up",
                                         "switch-to-workspace-down",
                                         "switch-panels",
                                         "switch-panels-backward",
                                         "cycle-panels",
                                         "cycle-panels-backward"};
        text += "[org/gnome/desktop/wm/keybindings]\n";
        for (const char* key : keys) {
            text += std::string(key) + "=@as []\n";
        }
    }
    if (!options.edgeTiling) {
        text += "[org/gnome/metacity]\nedge-tiling=false\n";
    }
    if (options.movesWithAlt) {
        text += "[org/gnome/desktop/wm/preferences]\nmouse-button-modifier='<Alt>'\n";
    }
    if (!text.empty()) {
        writeFile(session.configuration() / "glib-2.0" / "settings" / "keyfile", text);
    }
    return {{"metacity", options.compositing ? "--composite" : "--no-composite", "--sm-disable"},
            {}};
}

WindowManagerStart prepareKwin(const PrivateSession& session,
                               const WindowManager::Options& options) {
    std::string text;
    if (!options.electricBorders) {
        text += "[Windows]\nElectricBorderMaximize=false\nElectricBorderTiling=false\n";
    }
    if (options.movesWithAlt) {
        text += "[MouseBindings]\nCommandAllKey=Alt\n";
    }
    if (!text.empty()) {
        writeFile(session.configuration() / "kwinrc", text);
    }
    // It takes no combination with Control and Alt.
    WindowManagerStart start{{"kwin_x11", "--no-kactivities"}, {}};
    if (!options.compositing) {
        start.environment["KWIN_COMPOSE"] = "N";
    }
    return start;
}

}  // namespace

WindowManagerStart prepareWindowManager(const PrivateSession& session, WindowManager::Kind kind,
                                        WindowManager::Options options) {
    switch (kind) {
        case WindowManager::Kind::openbox:
            return prepareOpenbox(session, options);
        case WindowManager::Kind::xfwm4:
            return prepareXfwm4(session, options);
        case WindowManager::Kind::metacity:
            return prepareMetacity(session, options);
        case WindowManager::Kind::kwin:
            return prepareKwin(session, options);
    }
    throw DesktopError("no such window manager");
}

}  // namespace lumatile::desktop
