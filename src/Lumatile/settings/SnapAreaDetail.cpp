#include "Lumatile/settings/SnapAreaDetail.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

#include "Lumatile/settings/AreaRows.h"
#include "Lumatile/settings/GridEditorPlace.h"
#include "Lumatile/settings/GridEditorView.h"
#include "Lumatile/settings/RecorderFrame.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/settings/ShortcutRecorderView.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/ToggleSwitch.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr double titlePoints = 17;
constexpr double captionPoints = 12;
constexpr int warningIcon = 16;

// Of the room that is left over; whoever else wants some gets none before the grid has enough.
constexpr int gridShare = 1000;

QLabel* smallPrint(std::string_view text) {
    auto* label = new QLabel(viewText(text));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setFont(AppFonts::text(captionPoints));
    label->setProperty("tone", QStringLiteral("secondary"));
    return label;
}

QHBoxLayout* rowOf(QWidget* row) {
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    return layout;
}

}  // namespace

SnapAreaDetail::SnapAreaDetail(std::shared_ptr<SettingsViewModel> model, KeyCodes& keys,
                               QWidget* parent)
    : QWidget(parent),
      model_(std::move(model)),
      empty_(new QLabel(viewText(SettingsTexts::selectAnArea))),
      content_(new QWidget),
      title_(new QLabel),
      nameRow_(new QWidget),
      name_(new QLineEdit),
      shared_(smallPrint({})),
      grid_(new GridEditorPlace),
      caption_(smallPrint({})),
      restore_(new QPushButton(viewText(SettingsTexts::restoreDefaultArea))),
      delete_(new QPushButton(viewText(SettingsTexts::deleteArea))) {
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setProperty("tone", QStringLiteral("secondary"));
    whole->addWidget(empty_, 1);
    whole->addWidget(content_, 1);

    auto* layout = new QVBoxLayout(content_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    title_->setFont(AppFonts::text(titlePoints, QFont::DemiBold));
    title_->setTextFormat(Qt::PlainText);
    layout->addWidget(title_);

    QHBoxLayout* nameRow = rowOf(nameRow_);
    auto* nameLabel = new QLabel(viewText(SettingsTexts::name));
    nameLabel->setBuddy(name_);
    name_->setPlaceholderText(viewText(SettingsTexts::namePlaceholder));
    name_->setAccessibleName(viewText(SettingsTexts::name));
    nameRow->addWidget(nameLabel);
    nameRow->addWidget(name_, 1);
    layout->addWidget(nameRow_);
    layout->addWidget(makeShortcutRow(keys));
    layout->addWidget(shared_);
    layout->addWidget(makeWarning());
    layout->addWidget(grid_, gridShare);
    auto* captions = new QVBoxLayout;
    captions->setSpacing(2);
    captions->addWidget(caption_);
    captions->addWidget(smallPrint(SettingsTexts::arrowKeys));
    layout->addLayout(captions);
    auto* actionRow = new QHBoxLayout;
    delete_->setProperty("tone", QStringLiteral("destructive"));
    actionRow->addWidget(restore_);
    actionRow->addWidget(delete_);
    actionRow->addStretch(1);
    layout->addLayout(actionRow);
    layout->addStretch(1);

    // One length for the labels of the rows, so that their fields begin below one another.
    nameLabel->setMinimumWidth(
        nameLabel->fontMetrics().horizontalAdvance(viewText(SettingsTexts::shortcut)));

    connect(name_, &QLineEdit::editingFinished, this, [this] { commitName(); });
    connect(restore_, &QPushButton::clicked, this, [this] {
        // The button is off then and cannot keep the keyboard.
        grid_->grid().setFocus(Qt::OtherFocusReason);
        model_->restoreDefaultArea();
    });
    connect(delete_, &QPushButton::clicked, this, [this] { model_->deleteSelected(); });
    GridEditorView& grid = grid_->grid();
    grid.onPaint = [this](std::int64_t startColumn, std::int64_t startRow, std::int64_t column,
                          std::int64_t row) {
        model_->paint({startColumn, startRow}, {column, row});
    };
    grid.onCommit = [this] { model_->commitPaint(); };
    grid.onCancel = [this] { model_->cancelPaint(); };
    observation_ = model_->observe([this] { refresh(); });
    refresh();
}

QWidget* SnapAreaDetail::makeShortcutRow(KeyCodes& keys) {
    shortcutRow_ = new QWidget;
    QHBoxLayout* layout = rowOf(shortcutRow_);
    shortcutLabel_ = new QLabel(viewText(SettingsTexts::shortcut));
    recorder_ = new RecorderFrame(keys);
    isOn_ = new ToggleSwitch;
    isOn_->setAccessibleName(viewText(SettingsTexts::shortcutOn));
    isOn_->setToolTip(viewText(SettingsTexts::shortcutOn));
    shortcutLabel_->setBuddy(recorder_);
    layout->addWidget(shortcutLabel_);
    layout->addWidget(recorder_);
    layout->addWidget(isOn_);
    layout->addStretch(1);

    connect(isOn_, &QCheckBox::toggled, this,
            [this](bool checked) { model_->setShortcutEnabled(checked); });
    connect(&recorder_->remove(), &QToolButton::clicked, this, [this] {
        // The cross goes with the shortcut.
        recorder_->setFocus(Qt::OtherFocusReason);
        model_->removeShortcut();
    });
    RecorderField& field = recorder_->field();
    field.onRecording = [this](bool isRecording) { model_->setRecording(isRecording); };
    field.onRecord = [this](const Shortcut& shortcut) {
        model_->record(shortcut);
        recorder_->setFocus(Qt::OtherFocusReason);
    };
    field.onUnusableKey = [this] {
        model_->recordUnusableKey();
        recorder_->setFocus(Qt::OtherFocusReason);
    };
    return shortcutRow_;
}

QWidget* SnapAreaDetail::makeWarning() {
    warning_ = new QWidget;
    QHBoxLayout* layout = rowOf(warning_);
    auto* icon = new QLabel;
    icon->setPixmap(SymbolIcon::pixmap("exclamationmark.triangle", WidgetColors::warning(),
                                       warningIcon, devicePixelRatioF()));
    warningText_ = new QLabel;
    warningText_->setWordWrap(true);
    warningText_->setTextFormat(Qt::PlainText);
    warningText_->setProperty("tone", QStringLiteral("warning"));
    layout->addWidget(icon);
    layout->addWidget(warningText_, 1);
    return warning_;
}

int SnapAreaDetail::rowWidth() const {
    return shortcutLabel_->sizeHint().width() + recorder_->widthWithCross() +
           isOn_->sizeHint().width() + 2 * shortcutRow_->layout()->spacing();
}

void SnapAreaDetail::beginNaming() {
    name_->setFocus(Qt::OtherFocusReason);
    name_->selectAll();
}

void SnapAreaDetail::hideEvent(QHideEvent* event) {
    // The toolkit does not call it finished when the whole window goes.
    commitName();
    QWidget::hideEvent(event);
}

void SnapAreaDetail::commitName() {
    const SnapCommand* selected = model_->selected();
    if (selected == nullptr || !name_->isModified()) {
        return;
    }
    name_->setModified(false);
    if (!model_->renameSelected(name_->text().toStdString())) {
        name_->setText(QString::fromStdString(selected->displayName()));
    }
}

void SnapAreaDetail::refresh() {
    const std::optional<SnapCommand> command = model_->painted();
    empty_->setVisible(!command);
    content_->setVisible(command.has_value());
    grid_->setCommand(command);
    if (!command) {
        shown_.reset();
        return;
    }
    const bool isCustom = command->isCustom();
    title_->setText(QString::fromStdString(listedName(*command)));
    nameRow_->setVisible(isCustom);
    // What is being typed stays; it is committed when the field is left.
    if (isCustom && (shown_ != command->id || !name_->isModified())) {
        const QSignalBlocker quiet(name_);
        const QString text = QString::fromStdString(command->displayName());
        if (name_->text() != text) {
            name_->setText(text);
        }
        name_->setModified(false);
    }
    shown_ = command->id;
    refreshShortcut(*command);
    caption_->setText(
        viewText(isCustom ? SettingsTexts::dragForCustom : SettingsTexts::dragForBuiltIn));
    restore_->setVisible(!isCustom);
    restore_->setEnabled(model_->differsFromDefault());
    delete_->setVisible(isCustom);
}

void SnapAreaDetail::refreshShortcut(const SnapCommand& command) {
    recorder_->field().setCurrent(command.shortcut);
    isOn_->setVisible(command.shortcut.has_value());
    recorder_->remove().setVisible(command.shortcut.has_value());
    isOn_->showState(command.shortcut && command.shortcut->enabled);
    const std::optional<SnapCommand> twin = model_->sharingTwin(command);
    shared_->setVisible(twin && command.shortcut);
    if (twin) {
        shared_->setText(QString::fromStdString(SettingsTexts::sharedWith(listedName(*twin))));
    }
    const QString text = complaint(command);
    // The reader comes to the frame again when recording is over, and reads it out.
    recorder_->setAccessibleDescription(text.isEmpty() ? recorder_->field().accessibleDescription()
                                                       : text);
    warning_->setVisible(!text.isEmpty());
    warningText_->setText(text);
}

QString SnapAreaDetail::complaint(const SnapCommand& command) const {
    const auto usedBy = [](const SnapCommand& holder) {
        return QString::fromStdString(SettingsTexts::alreadyUsedBy(listedName(holder)));
    };
    if (const auto& refusal = model_->refusal()) {
        switch (refusal->reason) {
            case SettingsViewModel::Refusal::Reason::taken:
                return refusal->holder ? usedBy(*refusal->holder) : QString();
            case SettingsViewModel::Refusal::Reason::noCode:
                return viewText(SettingsTexts::unusableKey);
            case SettingsViewModel::Refusal::Reason::bareKey:
                break;
        }
        return viewText(SettingsTexts::bareKey);
    }
    if (const auto holder = model_->conflict(command)) {
        return usedBy(*holder);
    }
    return model_->isShortcutRefused(command)
               ? QString::fromStdString(SettingsTexts::refusedBy(model_->shortcutHolder(command)))
               : QString();
}

}  // namespace lumatile
