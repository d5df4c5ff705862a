#pragma once

#include <QWidget>

#include <memory>

#include "Lumatile/settings/SettingsServices.h"
#include "base/UUID.h"
#include "ports/Preferences.h"

class QMenu;

namespace lumatile {

class ToggleSwitch;

/// The general switches, the tip about the desktop's own tiling, and, for desktops without status
/// items, what the status menu holds besides. Also what cannot be done in this session.
class GeneralSectionView : public QWidget {
public:
    explicit GeneralSectionView(SettingsServices services, QWidget* parent = nullptr);
    GeneralSectionView(const GeneralSectionView&) = delete;
    GeneralSectionView& operator=(const GeneralSectionView&) = delete;
    ~GeneralSectionView() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void refresh();
    void fillMenu();
    void run(const UUID& id);

    SettingsServices services_;
    ToggleSwitch* login_;
    ToggleSwitch* drag_;
    ToggleSwitch* updates_;
    QMenu* menu_;
    std::unique_ptr<PreferencesWatch> watch_;
};

}  // namespace lumatile
