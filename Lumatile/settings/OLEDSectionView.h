#pragma once

#include <QWidget>

#include <functional>
#include <memory>

#include "Lumatile/SettingsViewModel.h"
#include "Lumatile/settings/SettingsCard.h"
#include "Lumatile/settings/SettingsSaying.h"

class QComboBox;

namespace lumatile {

/// The protections against burn-in.
class OLEDSectionView : public QWidget {
public:
    OLEDSectionView(std::shared_ptr<SettingsViewModel> model, const SettingsSaying& say,
                    QWidget* parent = nullptr);

private:
    QWidget* makeOrbit(const SettingsSaying& say);
    QWidget* makeJitter(const SettingsSaying& say);
    QWidget* makeDimming(const SettingsSaying& say);
    void refresh();
    void edit(const std::function<void(OLEDSettings&)>& change);

    std::shared_ptr<SettingsViewModel> model_;
    ToggleSwitch* orbit_ = nullptr;
    SettingsCard::Slider distance_{};
    QComboBox* interval_ = nullptr;
    ToggleSwitch* waits_ = nullptr;
    ToggleSwitch* jitter_ = nullptr;
    SettingsCard::Slider range_{};
    ToggleSwitch* dims_ = nullptr;
    SettingsCard::Slider after_{};
    SettingsCard::Slider strength_{};
    std::unique_ptr<SettingsViewModel::Observation> observation_;
};

}  // namespace lumatile
