#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumatile {

/// Port of the running application: all that another program of the same user may ask of it. No
/// request names a file, a program or keys, so whoever can ask gains nothing but what the status
/// menu and the settings offer.
class Controlled {
public:
    struct Command {
        std::string id;    ///< Text of its UUID.
        std::string key;   ///< The same on every machine; a landscape command and its portrait twin
                           ///< share it.
        std::string name;  ///< As menus show it.

        bool operator==(const Command&) const = default;
    };

    /// The protections that can be switched.
    enum class Protection : std::uint8_t { pixelShift, edgeJitter, idleDimming };

    virtual ~Controlled() = default;

    /// What is missing before windows can be moved, in a sentence; empty where nothing is.
    virtual std::string missing() = 0;

    /// In the order of menus and settings.
    virtual std::vector<Command> commands() = 0;

    /// Runs a command on the front window.
    /// @param idOrKey of a key that several commands have, the first of them is meant; on a screen
    ///        of the other orientation its twin runs, as ever
    /// @return false when there is no such command
    virtual bool run(std::string_view idOrKey) = 0;

    /// Shows the settings.
    /// @param section raw value of the section; empty: the one that was shown last
    /// @return false when there is no such section
    virtual bool openSettings(std::string_view section) = 0;

    /// What is missing, if anything, the lines on top of the status menu, and what cannot be done
    /// in this session.
    virtual std::vector<std::string> statusLines() = 0;

    virtual bool isOn(Protection protection) = 0;

    /// As the switch in the settings does.
    virtual void setOn(Protection protection, bool isOn) = 0;

    virtual bool isExaggerated() = 0;
    virtual void setExaggerated(bool isExaggerated) = 0;

    /// Ends the program soon after this returns.
    virtual void quit() = 0;
};

}  // namespace lumatile
