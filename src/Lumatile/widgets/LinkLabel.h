#pragma once

#include <QLabel>

#include <functional>

namespace lumatile {

/// A sentence that leads somewhere when it is clicked, or by Space and Return.
class LinkLabel : public QLabel {
public:
    explicit LinkLabel(QWidget* parent = nullptr);

    std::function<void()> onFollow;

    /// Whether it leads anywhere; plain text otherwise.
    void setLeads(bool leads);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void follow();
};

}  // namespace lumatile
