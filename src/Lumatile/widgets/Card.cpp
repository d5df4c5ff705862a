#include "Lumatile/widgets/Card.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/WheelRule.h"

namespace lumatile {

namespace {

constexpr double titlePoints = 13;
constexpr double notePoints = 12;
constexpr double valuePoints = 12;
constexpr int rowMargin = 10;
constexpr int sideMargin = 14;
/// The layout reaches this far beyond the edge of what is shown, so that a switch can end there.
constexpr int beyondEdge = ToggleSwitch::roomForFocus;
constexpr int sliderWidth = 200;

/// A slider that only stops at its steps, counted from its least value.
class StepSlider final : public QSlider {
public:
    StepSlider() : QSlider(Qt::Horizontal) {}

protected:
    void sliderChange(SliderChange change) override {
        const int step = singleStep();
        const int off = (value() - minimum()) % step;
        if (change == SliderValueChange && off != 0 && !signalsBlocked()) {
            // Quietly: who listens is told of the value that stays.
            const QSignalBlocker quiet(this);
            setValue(value() - off + (2 * off < step ? 0 : step));
        }
        QSlider::sliderChange(change);
    }
};

/// The text of a row, off together with the control that it names.
class RowLabel final : public QLabel {
public:
    RowLabel(const QString& text, QWidget* control) : QLabel(text), control_(control) {
        setBuddy(control);
        control->setAccessibleName(text);
        control->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::EnabledChange) {
            setEnabled(control_->isEnabled());
        }
        return QLabel::eventFilter(watched, event);
    }

private:
    QWidget* control_;
};

QHBoxLayout* labelledRow(QLabel* label, QWidget* control, int rightMargin) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, rowMargin, rightMargin, rowMargin);
    row->setSpacing(12);
    WheelRule::giveTo(*control);
    row->addWidget(label, 1);
    row->addWidget(control);
    return row;
}

}  // namespace

Card::Card(const QString& title, QWidget* parent) : QWidget(parent) {
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(6);
    if (!title.isEmpty()) {
        auto* heading = new QLabel(title);
        heading->setFont(AppFonts::text(titlePoints, QFont::DemiBold));
        heading->setContentsMargins(2, 0, 0, 0);
        whole->addWidget(heading);
        setAccessibleName(title);
    }
    auto* card = new QFrame;
    card->setObjectName(QStringLiteral("card"));
    rows_ = new QVBoxLayout(card);
    rows_->setContentsMargins(sideMargin, 2, sideMargin - beyondEdge, 2);
    rows_->setSpacing(0);
    whole->addWidget(card);
}

void Card::Slider::showState(int position, const QString& text) const {
    const QSignalBlocker quiet(slider);
    slider->setValue(position);
    slider->setAccessibleDescription(text);
    value->setText(text);
}

void Card::Slider::setEnabled(bool enabled) const {
    slider->setEnabled(enabled);
    value->setEnabled(enabled);
}

void Card::append(QWidget* widget) {
    auto* layout = new QHBoxLayout;
    layout->setContentsMargins(0, 0, beyondEdge, 0);
    layout->addWidget(widget);
    rows_->addLayout(layout);
}

void Card::addLine() {
    if (!isFirst_) {
        auto* line = new QFrame;
        line->setObjectName(QStringLiteral("rowLine"));
        append(line);
    }
    isFirst_ = false;
}

void Card::addRow(const QString& text, QWidget* control) {
    addLine();
    auto* label = new RowLabel(text, control);
    label->setWordWrap(true);
    const bool isSwitch = dynamic_cast<ToggleSwitch*>(control) != nullptr;
    rows_->addLayout(labelledRow(label, control, isSwitch ? 0 : beyondEdge));
}

ToggleSwitch* Card::addToggle(const QString& text) {
    auto* toggle = new ToggleSwitch;
    addRow(text, toggle);
    return toggle;
}

Card::Slider Card::addSlider(const QString& text, int least, int most, const QString& widest,
                             int step) {
    auto* slider = new StepSlider;
    slider->setRange(least, most);
    slider->setSingleStep(step);
    slider->setPageStep(step);
    slider->setMinimumWidth(sliderWidth);
    auto* value = new QLabel;
    value->setFont(AppFonts::monospaced(valuePoints));
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(widest) + 4);

    addLine();
    auto* row = labelledRow(new RowLabel(text, slider), slider, beyondEdge);
    row->addWidget(value);
    rows_->addLayout(row);
    return {slider, value};
}

QLabel* Card::addNote(const QString& text) {
    addLine();
    auto* note = new QLabel(text);
    note->setFont(AppFonts::text(notePoints));
    note->setProperty("tone", QStringLiteral("secondary"));
    note->setWordWrap(true);
    note->setContentsMargins(0, rowMargin, 0, rowMargin);
    append(note);
    return note;
}

void Card::addWidget(QWidget* widget) {
    addLine();
    append(widget);
}

}  // namespace lumatile
