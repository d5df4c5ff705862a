#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/freedesktop/glib/GLibHandles.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {

/// Plasma's service of global shortcuts, as other programs and Plasma's own page use it.
/// Combinations are written as Plasma numbers them.
class PlasmaShortcuts {
public:
    /// @throws DesktopError when there is no bus
    explicit PlasmaShortcuts(const PrivateSession& session);

    /// Ctrl+Alt and a key of the toolkit.
    static constexpr std::int32_t controlAlt(std::int32_t key) { return 0x0c000000 | key; }
    static constexpr std::int32_t left = 0x01000012;

    /// A program takes a combination for an action.
    /// @return whether it got it
    bool take(const std::string& program, const std::string& action, std::int32_t key);

    /// Forgets the action of a program.
    void giveBack(const std::string& program, const std::string& action);

    /// What Plasma's page does for the user; 0 for none.
    void change(const std::string& program, const std::string& action, std::int32_t key);

    /// The combination that an action has; 0 for none.
    std::int32_t keyOf(const std::string& program, const std::string& action);

    /// What Plasma's page lists of a program: the actions by their titles.
    std::map<std::string, std::string> actionsOf(const std::string& program);

private:
    GVariantHandle call(const char* method, GVariant* arguments);

    GObjectHandle<GDBusConnection> bus_;
};

}  // namespace lumatile::desktop
