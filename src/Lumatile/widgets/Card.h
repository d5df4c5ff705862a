#pragma once

#include <QFrame>
#include <QString>

#include "Lumatile/widgets/ToggleSwitch.h"

class QLabel;
class QSlider;
class QVBoxLayout;

namespace lumatile {

/// A titled group of rows: a text on the left, a control on the right. What the controls show ends
/// at one edge.
class Card : public QWidget {
public:
    /// @param title empty: none
    explicit Card(const QString& title, QWidget* parent = nullptr);

    /// A row whose text is the control's label, for the eye, the keyboard and the screen reader.
    void addRow(const QString& text, QWidget* control);

    ToggleSwitch* addToggle(const QString& text);

    struct Slider {
        QSlider* slider;
        QLabel* value;  ///< In the monospaced face, as wide as the widest value.

        /// Shows a state that is so already: nobody is told.
        void showState(int position, const QString& text) const;

        void setEnabled(bool enabled) const;
    };
    /// @param widest the longest text that the value shows; sliders with the same one are of one
    /// length
    /// @param step between two values that the user can choose
    Slider addSlider(const QString& text, int least, int most, const QString& widest, int step = 1);

    /// Small print over the whole width.
    QLabel* addNote(const QString& text);

    /// Any widget over the whole width.
    void addWidget(QWidget* widget);

private:
    QVBoxLayout* rows_;
    bool isFirst_ = true;

    void addLine();
    void append(QWidget* widget);
};

}  // namespace lumatile
