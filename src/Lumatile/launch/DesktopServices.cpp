#include "Lumatile/launch/DesktopServices.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "ports/KeyCodes.h"

namespace lumatile {

namespace {

std::string sessionNames() {
    const char* const value = std::getenv("XDG_CURRENT_DESKTOP");
    return value != nullptr ? value : "";
}

}  // namespace

DesktopServices::DesktopServices(const DesktopSession& session, BusConnection& sessionBus,
                                 SystemLog& log)
    : words(sessionNames(), session.windowManagerName,
            [&keys = session.keyCodes] { return keys.legends(); }),
      loginItem(XdgFolders::fromEnvironment(), AutostartEntry::runningBinary(), sessionNames()),
      launchAtLogin(loginItem, log),
      tiling([this] { return words.host(); }, XdgFolders::fromEnvironment(), sessionBus,
             session.holdsEdgesBack),
      notifications(sessionBus) {}

KeyTexts DesktopServices::keyTexts() {
    return {[this](std::string_view glyphs) { return words.apply(glyphs); },
            [this](std::string_view key) { return words.legend(key); },
            [this](std::uint32_t keyCode) { return words.legend(keyCode); }};
}

}  // namespace lumatile
