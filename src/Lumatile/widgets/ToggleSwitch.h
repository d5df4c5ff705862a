#pragma once

#include <QCheckBox>

namespace lumatile {

/// A check box drawn as a switch at the end of its row; the row's text is its label and belongs to
/// it.
class ToggleSwitch : public QCheckBox {
public:
    /// Between the switch as it is drawn and each border of the widget, logical pixels.
    static constexpr int roomForFocus = 3;

    explicit ToggleSwitch(QWidget* parent = nullptr);

    /// Shows a state that is so already: nobody is told.
    void showState(bool on);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
};

}  // namespace lumatile
