#pragma once

class QWidget;

namespace lumatile {

/// The dark appearance of the settings window, whatever the desktop's is.
struct WidgetStyle {
    WidgetStyle() = delete;

    /// For `window` and everything in it.
    static void apply(QWidget& window);
};

}  // namespace lumatile
