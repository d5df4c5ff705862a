#pragma once

class QPushButton;
class QWidget;

namespace lumatile {

/// A page whose `content` scrolls where the screen has no room for it, above a button that is
/// always seen. Owns both.
/// @param leastWidth of the button, logical pixels
QWidget* scrolledAbove(QWidget* content, QPushButton* button, int leastWidth);

}  // namespace lumatile
