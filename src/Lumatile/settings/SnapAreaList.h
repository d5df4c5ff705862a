#pragma once

#include <QWidget>

#include <memory>
#include <string>

#include "Lumatile/SettingsViewModel.h"

class QLabel;
class QListWidget;
class QListWidgetItem;
class QToolButton;

namespace lumatile {

/// The list of snap areas in its two groups, with the buttons that add and delete.
class SnapAreaList : public QWidget {
public:
    explicit SnapAreaList(std::shared_ptr<SettingsViewModel> model, QWidget* parent = nullptr);

private:
    void refresh();
    void refill();
    void addHeading(std::string_view text);
    void addArea(const SnapCommand& command);
    void takeSelection();

    std::shared_ptr<SettingsViewModel> model_;
    QListWidget* list_;
    QToolButton* delete_;
    QLabel* refused_;
    std::vector<SnapCommand> shown_;
    bool isRefreshing_ = false;
    SettingsViewModel::Observation observation_;
};

/// The name of an area where landscape and portrait areas stand side by side.
std::string listedName(const SnapCommand& command);

}  // namespace lumatile
