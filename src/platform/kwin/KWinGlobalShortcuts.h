#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/freedesktop/bus/LoneBusConnection.h"

namespace lumatile {

/// Plasma's service of global shortcuts, as this program's part of it.
class KWinGlobalShortcuts {
public:
    static constexpr const char* service = "org.kde.kglobalaccel";
    static constexpr const char* component = "lumatile";

    /// @param bus outlives this
    explicit KWinGlobalShortcuts(LoneBusConnection& bus) : bus_(bus) {}

    /// Who has a combination: its name and that of the program, as the user knows them. Absent when
    /// it is free, or this program's own.
    /// @param key as of `KWinKey`
    std::optional<std::string> holder(std::int32_t key);

    enum class Taking : std::uint8_t {
        taken,
        refused,  ///< The service gave the action another combination or none.
        silent,   ///< The service has not answered in time.
    };

    /// Takes a combination. What the service has stored for the action is written over.
    /// @param action the same in every run
    /// @param title for the user
    Taking take(const std::string& action, const std::string& title, std::int32_t key);

    /// An action of this program to which somebody else has given a combination.
    struct Change {
        std::string action;
        std::int32_t key = 0;  ///< 0: none.
    };

    /// @param arguments of the signal `changed`
    /// @return absent where it is about another program, or not understood
    static std::optional<Change> changeIn(GVariant* arguments);

    /// Gives the combination of an action back and forgets the action.
    void giveBack(const std::string& action);

    /// Where the presses of this program's combinations are told: path of an object of the service.
    static constexpr const char* path = "/component/lumatile";
    static constexpr const char* interface = "org.kde.kglobalaccel.Component";
    static constexpr const char* pressed = "globalShortcutPressed";

    /// The service's own object and interface, which tells what the user has changed.
    static constexpr const char* servicePath = "/kglobalaccel";
    static constexpr const char* serviceInterface = "org.kde.KGlobalAccel";
    static constexpr const char* changed = "yourShortcutsChanged";

private:
    LoneBusConnection& bus_;
};

}  // namespace lumatile
