#pragma once

#include <array>
#include <string>
#include <string_view>

#include "ports/Controlled.h"

/// The names by which other programs reach the running one over the session bus. Scripts rely on
/// all of it: an incompatible change gets a new interface beside this one.
namespace lumatile::ControlInterface {

/// What the bus name of a program begins with; the display's token follows, since one bus may serve
/// several desktops.
inline constexpr std::string_view busNamePrefix = "org.lumatile.Control.";

inline constexpr const char* path = "/org/lumatile/Control";
inline constexpr const char* name = "org.lumatile.Control1";

inline constexpr const char* notReady = "org.lumatile.Control1.Error.NotReady";
inline constexpr const char* unknownCommand = "org.lumatile.Control1.Error.UnknownCommand";
inline constexpr const char* unknownSection = "org.lumatile.Control1.Error.UnknownSection";
inline constexpr const char* unknownProtection = "org.lumatile.Control1.Error.UnknownProtection";

/// A protection as requests name it.
struct ProtectionName {
    std::string_view name;
    Controlled::Protection protection;
};
inline constexpr std::array<ProtectionName, 3> protections{
    {{"pixelShift", Controlled::Protection::pixelShift},
     {"edgeJitter", Controlled::Protection::edgeJitter},
     {"idleDimming", Controlled::Protection::idleDimming}}};

/// The interface as the bus describes it.
inline constexpr const char* description = R"xml(<node><interface name="org.lumatile.Control1">
  <!-- Every command in the order of the menus: id, key, name. -->
  <method name="ListCommands"><arg name="commands" type="a(sss)" direction="out"/></method>
  <!-- Runs a command, by its id or key, on the front window. NotReady while windows cannot be moved. -->
  <method name="RunCommand"><arg name="idOrKey" type="s" direction="in"/></method>
  <!-- Shows the settings: "general", "commands", "oled", "about", or "" for the last section. -->
  <method name="OpenSettings"><arg name="section" type="s" direction="in"/></method>
  <!-- What is missing before windows can be moved, if anything; the lines on top of the status menu. -->
  <method name="StatusLines"><arg name="lines" type="as" direction="out"/></method>
  <!-- "pixelShift", "edgeJitter" and "idleDimming", and whether each is on. -->
  <method name="ListProtections"><arg name="protections" type="a(sb)" direction="out"/></method>
  <method name="SetProtection">
    <arg name="protection" type="s" direction="in"/><arg name="on" type="b" direction="in"/>
  </method>
  <!-- The demonstration mode; never stored. -->
  <method name="IsExaggerated"><arg name="exaggerated" type="b" direction="out"/></method>
  <method name="SetExaggerated"><arg name="exaggerated" type="b" direction="in"/></method>
  <!-- Ends the program. -->
  <method name="Quit"/>
</interface></node>)xml";

}  // namespace lumatile::ControlInterface
