#pragma once

#include <QComboBox>

namespace lumatile {

/// A box of choices with the settings' own arrow.
class ChoiceBox : public QComboBox {
public:
    explicit ChoiceBox(QWidget* parent = nullptr);

    void showPopup() override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace lumatile
