#pragma once

#include <QWidget>

#include <functional>
#include <memory>

#include "Lumatile/SettingsViewModel.h"
#include "Lumatile/widgets/Card.h"
#include "Lumatile/widgets/Saying.h"

class QComboBox;

namespace lumatile {

/// The protections against burn-in.
class OLEDSectionView : public QWidget {
public:
    OLEDSectionView(std::shared_ptr<SettingsViewModel> model, const Saying& say,
                    QWidget* parent = nullptr);

private:
    QWidget* makeOrbit(const Saying& say);
    QWidget* makeJitter(const Saying& say);
    QWidget* makeDimming(const Saying& say);
    void refresh();
    void edit(const std::function<void(OLEDSettings&)>& change);

    std::shared_ptr<SettingsViewModel> model_;
    ToggleSwitch* orbit_ = nullptr;
    Card::Slider distance_{};
    QComboBox* interval_ = nullptr;
    ToggleSwitch* waits_ = nullptr;
    ToggleSwitch* jitter_ = nullptr;
    Card::Slider range_{};
    ToggleSwitch* dims_ = nullptr;
    Card::Slider after_{};
    Card::Slider strength_{};
    SettingsViewModel::Observation observation_;
};

}  // namespace lumatile
