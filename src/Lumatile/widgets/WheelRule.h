#pragma once

#include <QObject>

class QWidget;

namespace lumatile {

/// Leaves the wheel to the page: over a control it scrolls what the control stands in, unless the
/// user has clicked into the control and it has kept the keyboard since.
class WheelRule final : public QObject {
public:
    /// For `control`, which owns it.
    static void giveTo(QWidget& control);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit WheelRule(QWidget& control);

    bool isClickedInto_ = false;
};

}  // namespace lumatile
