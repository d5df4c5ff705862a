#pragma once

#include <memory>

#include "Lumatile/CloudStore.h"
#include "Lumatile/settings/SettingsCard.h"
#include "Lumatile/settings/SettingsSaying.h"

class QLabel;
class QPushButton;

namespace lumatile {

class ChoiceBox;

/// Where the settings are shared with the user's other computers, and how it stands with that.
class SyncCard : public SettingsCard {
public:
    /// @param cloud outlives the card
    SyncCard(CloudStore& cloud, SettingsSaying say, QWidget* parent = nullptr);
    SyncCard(const SyncCard&) = delete;
    SyncCard& operator=(const SyncCard&) = delete;
    ~SyncCard() override;

private:
    void refresh();
    void choose(int index);
    void chooseFolder();

    CloudStore& cloud_;
    SettingsSaying say_;
    ChoiceBox* location_;
    QLabel* status_;
    QPushButton* replace_;
    std::unique_ptr<CloudWatch> watch_;
};

}  // namespace lumatile
