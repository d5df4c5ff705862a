#pragma once

#include <QWidget>

#include "Lumatile/widgets/Saying.h"
#include "onboarding/TipTexts.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace lumatile {

/// A tip: its symbol, and beside it what it says.
class TipView : public QWidget {
public:
    explicit TipView(Saying say, QWidget* parent = nullptr);

    void show(const TipTexts::Tip& tip, const QColor& symbolColor);

    /// What is wrong, below the text; nothing with an empty one.
    void setWarning(const QString& warning);

    /// Below the text, beside those before it.
    void addButton(QPushButton* button);

private:
    Saying say_;
    QLabel* symbol_;
    QLabel* title_;
    QLabel* text_;
    QLabel* warning_;
    QVBoxLayout* words_;
    QHBoxLayout* buttons_ = nullptr;
};

}  // namespace lumatile
