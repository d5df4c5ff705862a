#pragma once

#include <cstdint>
#include <functional>
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

    enum class Taking : std::uint8_t {
        taken,
        refused,  ///< Somebody else has it.
        silent,   ///< The service has not answered in time; it may still carry out what it was
                  ///< asked.
    };

    struct Outcome {
        Taking taking = Taking::silent;

        /// Who has a combination that was refused: its name and that of the program, as the user
        /// knows them. Empty where the service does not tell.
        std::string holder;
    };

    /// Takes a combination, and waits for that for 0.25 s at most. What the service has stored for
    /// the action is written over; another action of this program that it has stored with the
    /// combination is of an earlier run and is forgotten.
    /// @param action the same in every run
    /// @param title for the user
    /// @param key as of `KWinKey`
    Outcome take(const std::string& action, const std::string& title, std::int32_t key);

    /// Asks whether nobody has a combination, without waiting.
    /// @param told called once with the answer, unless the bus goes before; absent: there is none
    void askWhetherFree(std::int32_t key, const std::function<void(std::optional<bool>)>& told);

    /// An action of this program to which somebody else has given a combination.
    struct Change {
        std::string action;
        std::int32_t key = 0;  ///< 0: none.
    };

    /// @param arguments of the signal `changed`
    /// @return absent where it is about another program, or not understood
    static std::optional<Change> changeIn(GVariant* arguments);

    /// Gives the combination of an action back and forgets the action. Does not wait; what is asked
    /// afterwards comes after it.
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
    std::optional<std::string> holderIn(GVariant* holders, const std::string& action);

    LoneBusConnection& bus_;
};

}  // namespace lumatile
