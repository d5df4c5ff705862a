#pragma once

#include <QWidget>

#include <functional>
#include <optional>

#include "commands/Shortcut.h"

namespace lumatile {

class KeyCodes;

/// The field that records a shortcut: click it, and the next key press is the shortcut. It records
/// while it has the focus, and only then. Every key is recorded as pressed; whoever receives it
/// decides whether it will do. While it records it has the keyboard to itself, so that the desktop
/// does not act on the keys.
class RecorderField : public QWidget {
public:
    /// @param keys outlives the field
    explicit RecorderField(KeyCodes& keys, QWidget* parent = nullptr);

    std::function<void(const Shortcut&)> onRecord;

    /// Called in place of `onRecord` for a key that has no virtual key code.
    std::function<void()> onUnusableKey;

    /// Called with true when recording begins and with false when it has ended, before those.
    std::function<void(bool)> onRecording;

    const std::optional<Shortcut>& current() const { return current_; }
    void setCurrent(const std::optional<Shortcut>& current);

    bool isRecording() const { return isRecording_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QString shownText() const;
    void describe();
    void setRecording(bool isRecording);

    KeyCodes& keys_;
    std::optional<Shortcut> current_;
    bool isRecording_ = false;
};

}  // namespace lumatile
