#pragma once

#include <QWidget>

#include <memory>

#include "Lumatile/SettingsViewModel.h"

namespace lumatile {

class KeyCodes;
class SnapAreaDetail;
class SnapAreaList;

/// The snap areas: the list and the selected one beside it. On a screen that is too narrow for both
/// the list gives way, down to where its names are cut short.
class SnapAreasView : public QWidget {
public:
    /// @param keys outlives the view
    SnapAreasView(const std::shared_ptr<SettingsViewModel>& model, KeyCodes& keys,
                  QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    SnapAreaList* list_;
    SnapAreaDetail* detail_;
};

}  // namespace lumatile
