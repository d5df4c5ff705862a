#pragma once

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

#include "Lumatile/SettingsViewModel.h"

class QToolButton;

namespace lumatile {

class AreaRows;
class LinkLabel;

/// The snap areas in their two groups, with the buttons that add and delete. The user's own have
/// their room at the bottom, whatever of the built-in ones shows.
class SnapAreaList : public QWidget {
public:
    explicit SnapAreaList(std::shared_ptr<SettingsViewModel> model, QWidget* parent = nullptr);

    /// Takes what there is of its usual width, and of the least at which names can be told.
    void setRoom(int width);

    /// Called when the user has added an area, which is selected then.
    std::function<void()> onAdded;

protected:
    bool event(QEvent* event) override;

private:
    void add();
    void refresh();
    void refreshRefused();
    void limitOwn();

    std::shared_ptr<SettingsViewModel> model_;
    AreaRows* builtIn_;
    AreaRows* own_;
    QToolButton* delete_;
    LinkLabel* refused_;
    std::vector<SnapCommand> shown_;
    SettingsViewModel::Observation observation_;
};

}  // namespace lumatile
