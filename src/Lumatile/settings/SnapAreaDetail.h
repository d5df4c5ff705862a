#pragma once

#include <QWidget>

#include <memory>

#include "Lumatile/SettingsViewModel.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace lumatile {

class GridEditorView;
class KeyCodes;
class RecorderField;
class ToggleSwitch;

/// The selected area: its name, its shortcut, its cells.
class SnapAreaDetail : public QWidget {
public:
    /// @param keys outlives the view
    SnapAreaDetail(std::shared_ptr<SettingsViewModel> model, KeyCodes& keys,
                   QWidget* parent = nullptr);

protected:
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* makeShortcutRow(KeyCodes& keys);
    QWidget* makeWarning();
    void refresh();
    void refreshShortcut(const SnapCommand& command);
    void commitName();

    std::shared_ptr<SettingsViewModel> model_;
    QLabel* empty_;
    QWidget* content_;
    QLabel* title_;
    QWidget* nameRow_;
    QLineEdit* name_;
    RecorderField* recorder_ = nullptr;
    QPushButton* record_ = nullptr;
    ToggleSwitch* isOn_ = nullptr;
    QPushButton* remove_ = nullptr;
    QWidget* warning_ = nullptr;
    QLabel* warningText_ = nullptr;
    GridEditorView* grid_;
    QLabel* caption_;
    QPushButton* restore_;
    QPushButton* delete_;
    std::optional<UUID> shown_;
    SettingsViewModel::Observation observation_;
};

}  // namespace lumatile
