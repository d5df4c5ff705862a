#pragma once

#include <QWidget>

#include <memory>

#include "Lumatile/DesktopTilingMonitor.h"
#include "Lumatile/settings/SettingsServices.h"

class QPushButton;

namespace lumatile {

class TipView;

/// Tells whether the desktop's own tiling competes with dragging, for as long as it is on screen,
/// and leads to the settings that end it.
class SystemTilingTip : public QWidget {
public:
    explicit SystemTilingTip(const SettingsServices& services, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void refresh();
    void openSettings();
    void askToSwitchOff();

    DesktopTiling& tiling_;
    Saying say_;
    std::unique_ptr<SystemTilingMonitor> monitor_;
    TipView* tip_;
    QPushButton* open_;
    QPushButton* switchOff_;
};

}  // namespace lumatile
