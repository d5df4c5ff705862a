#pragma once

#include <QPushButton>

namespace lumatile {

/// A button whose menu hangs from its left edge, with the settings' own arrow after the text.
class MenuButton : public QPushButton {
public:
    explicit MenuButton(const QString& text, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace lumatile
