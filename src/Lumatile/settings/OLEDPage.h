#pragma once

#include <QWidget>

#include <memory>

#include "Lumatile/SettingsViewModel.h"
#include "Lumatile/settings/SettingsServices.h"

namespace lumatile {

/// The protections against burn-in, below the tip about what they cover.
class OLEDPage : public QWidget {
public:
    OLEDPage(const std::shared_ptr<SettingsViewModel>& model, const SettingsServices& services,
             QWidget* parent = nullptr);
};

}  // namespace lumatile
