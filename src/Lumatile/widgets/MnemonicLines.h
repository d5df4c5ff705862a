#pragma once

#include <QObject>

class QWidget;

namespace lumatile {

/// Shows the lines below the letters that Alt reaches while Alt is held, and not otherwise: who
/// works with the mouse has no use for them.
class MnemonicLines final : public QObject {
public:
    /// For `window` and everything in it, from now on. The window gets a style of its own.
    static void showIn(QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit MnemonicLines(QWidget& window);
    void show(bool areShown);

    QWidget& window_;
};

}  // namespace lumatile
