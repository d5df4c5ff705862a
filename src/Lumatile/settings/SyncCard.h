#pragma once

#include <memory>

#include "Lumatile/widgets/Card.h"
#include "Lumatile/widgets/Saying.h"
#include "ports/SharedStore.h"

class QLabel;
class QPushButton;

namespace lumatile {

class ChoiceBox;

/// Where the settings are shared with the user's other computers, and how it stands with that.
class SyncCard : public Card {
public:
    /// @param sharedStore outlives the card
    SyncCard(SharedStore& sharedStore, Saying say, QWidget* parent = nullptr);
    SyncCard(const SyncCard&) = delete;
    SyncCard& operator=(const SyncCard&) = delete;
    ~SyncCard() override;

private:
    void refresh();
    void choose(int index);
    void chooseFolder();

    SharedStore& sharedStore_;
    Saying say_;
    ChoiceBox* location_;
    QLabel* status_;
    QPushButton* replace_;
    SharedStoreWatch watch_;
};

}  // namespace lumatile
