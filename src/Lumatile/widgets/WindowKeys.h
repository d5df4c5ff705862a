#pragma once

#include <functional>

class QWidget;

namespace lumatile {

/// The keys that the program's windows answer to, those that its menu shows and the one that closes
/// a window. Text fields have the usual ones of their own.
struct WindowKeys {
    std::function<void()> openSettings;
    std::function<void()> quit;

    /// Ctrl+W closes `window`, Ctrl+, opens the settings, Ctrl+Q ends the program.
    void addTo(QWidget& window) const;
};

}  // namespace lumatile
