#pragma once

#include <QWidget>

#include <memory>

#include "Lumatile/SettingsViewModel.h"

namespace lumatile {

class KeyCodes;

/// The snap areas: the list and the selected one beside it.
class SnapAreasView : public QWidget {
public:
    /// @param keys outlives the view
    SnapAreasView(const std::shared_ptr<SettingsViewModel>& model, KeyCodes& keys,
                  QWidget* parent = nullptr);
};

}  // namespace lumatile
