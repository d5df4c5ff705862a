#pragma once

#include <QWidget>

#include <memory>

#include "Lumatile/SettingsViewModel.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace lumatile {

class GridEditorPlace;
class KeyCodes;
class RecorderFrame;
class ToggleSwitch;

/// The selected area: its name, its shortcut, its cells.
class SnapAreaDetail : public QWidget {
public:
    /// @param keys outlives the view
    SnapAreaDetail(std::shared_ptr<SettingsViewModel> model, KeyCodes& keys,
                   QWidget* parent = nullptr);

    /// What the row of the shortcut takes with all that may be in it.
    int rowWidth() const;

    /// The name can be typed over at once.
    void beginNaming();

protected:
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* makeShortcutRow(KeyCodes& keys);
    QWidget* makeWarning();
    void refresh();
    void refreshShortcut(const SnapCommand& command);
    QString complaint(const SnapCommand& command) const;
    void commitName();

    std::shared_ptr<SettingsViewModel> model_;
    QLabel* empty_;
    QWidget* content_;
    QLabel* title_;
    QWidget* nameRow_;
    QLineEdit* name_;
    QWidget* shortcutRow_ = nullptr;
    QLabel* shortcutLabel_ = nullptr;
    RecorderFrame* recorder_ = nullptr;
    ToggleSwitch* isOn_ = nullptr;
    QLabel* shared_;
    QWidget* warning_ = nullptr;
    QLabel* warningText_ = nullptr;
    GridEditorPlace* grid_;
    QLabel* caption_;
    QPushButton* restore_;
    QPushButton* delete_;
    std::optional<UUID> shown_;
    SettingsViewModel::Observation observation_;
};

}  // namespace lumatile
