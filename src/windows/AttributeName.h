#pragma once

#include <string_view>

/// The attribute names and values in which windows and applications are asked about themselves.
namespace lumatile::AttributeName {

inline constexpr std::string_view position = "AXPosition";      ///< Point: top-left of the frame.
inline constexpr std::string_view size = "AXSize";              ///< Size of the frame.
inline constexpr std::string_view role = "AXRole";              ///< Text.
inline constexpr std::string_view subrole = "AXSubrole";        ///< Text.
inline constexpr std::string_view minimized = "AXMinimized";    ///< Boolean.
inline constexpr std::string_view fullScreen = "AXFullScreen";  ///< Boolean.
inline constexpr std::string_view parent = "AXParent";          ///< Element.

inline constexpr std::string_view focusedApplication = "AXFocusedApplication";  ///< Element.
inline constexpr std::string_view focusedWindow = "AXFocusedWindow";            ///< Element.
inline constexpr std::string_view mainWindow = "AXMainWindow";                  ///< Element.
inline constexpr std::string_view windows = "AXWindows";  ///< List of elements.

/// Boolean of an application: it animates moves for assistive programs, which garbles a placing.
inline constexpr std::string_view enhancedUserInterface = "AXEnhancedUserInterface";

inline constexpr std::string_view windowRole = "AXWindow";
inline constexpr std::string_view standardWindowSubrole = "AXStandardWindow";
inline constexpr std::string_view dialogSubrole = "AXDialog";
inline constexpr std::string_view floatingWindowSubrole = "AXFloatingWindow";

}  // namespace lumatile::AttributeName
