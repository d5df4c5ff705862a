#pragma once

#include <QWidget>

#include <array>
#include <functional>
#include <memory>

#include "Lumatile/SettingsViewModel.h"
#include "Lumatile/settings/SettingsServices.h"

class QStackedWidget;

namespace lumatile {

class RowList;

/// The sections in a sidebar and the selected one's page beside it. A page is made when it is first
/// shown.
class SettingsRootView : public QWidget {
public:
    /// @param services what they refer to outlives the view
    SettingsRootView(std::shared_ptr<SettingsViewModel> model, SettingsServices services,
                     QWidget* parent = nullptr);

private:
    void refresh();
    QWidget* makePage(SettingsSection section);
    QWidget* makeContent(SettingsSection section);

    std::shared_ptr<SettingsViewModel> model_;
    SettingsServices services_;
    RowList* sidebar_;
    QStackedWidget* pages_;
    std::array<QWidget*, settingsSections.size()> made_{};
    SettingsViewModel::Observation observation_;
};

}  // namespace lumatile
