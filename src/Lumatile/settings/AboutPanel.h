#pragma once

#include <memory>
#include <string>

#include "Lumatile/widgets/Saying.h"
#include "Lumatile/widgets/WindowKeys.h"

class QWidget;

namespace lumatile {

/// The small window that says what the program is. Made when it is first shown.
class AboutPanel {
public:
    /// @param version of this build
    AboutPanel(std::string version, Saying say, WindowKeys keys);
    AboutPanel(const AboutPanel&) = delete;
    AboutPanel& operator=(const AboutPanel&) = delete;
    ~AboutPanel();

    /// Shows it in front of the other windows.
    /// @param over where that is on the screen, it opens over the middle of it and stays above it;
    /// otherwise in the middle of the primary screen
    void show(QWidget* over = nullptr);

private:
    std::string version_;
    Saying say_;
    WindowKeys keys_;
    std::unique_ptr<QWidget> window_;
};

}  // namespace lumatile
