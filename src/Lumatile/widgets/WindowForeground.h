#pragma once

#include <functional>
#include <string_view>

class QWidget;

namespace lumatile {

/// Shows the window, minimized or not, in front of the others and with the keyboard.
void bringToFront(QWidget& window);

/// The same because of something that the user has done just now outside of this program's windows.
/// A window manager that keeps windows from pushing themselves before the one in which the user is
/// typing is then told the time of this, and not that of the last event that the program knows.
void bringToFrontNow(QWidget& window);

/// Has `bringToFrontNow` ask the desktop as well, where windows cannot come in front by themselves.
/// @param bring told the title of the window; empty: not any more
void askDesktopForFront(std::function<void(std::string_view title)> bring);

}  // namespace lumatile
