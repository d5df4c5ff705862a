#pragma once

#include <QWidget>

class QToolButton;

namespace lumatile {

class KeyCodes;
class RecorderField;

/// The frame round the shortcut recorder. The Tab key reaches it and not the recorder, or going
/// through the window would record that key; Space or Return begins the recording. The cross that
/// removes the shortcut is in it.
class RecorderFrame : public QWidget {
public:
    /// @param keys outlives the frame
    explicit RecorderFrame(KeyCodes& keys, QWidget* parent = nullptr);

    RecorderField& field() { return *field_; }
    QToolButton& remove() { return *remove_; }

    /// Its width while the cross is in it.
    int widthWithCross() const;

    /// Begins to record.
    void begin();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    RecorderField* field_;
    QToolButton* remove_;
};

}  // namespace lumatile
