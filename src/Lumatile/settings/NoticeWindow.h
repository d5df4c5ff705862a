#pragma once

#include <QDialog>
#include <QPointer>

#include "ports/NoticePanel.h"

namespace lumatile {

/// The small window that answers what the user has just asked.
class NoticeWindow final : public NoticePanel {
public:
    NoticeWindow() = default;
    NoticeWindow(const NoticeWindow&) = delete;
    NoticeWindow& operator=(const NoticeWindow&) = delete;
    ~NoticeWindow() override;

    void show(const Notice& notice, std::function<void()> chosen) override;

    /// The one on screen; null when there is none.
    QDialog* window() { return window_; }

private:
    QPointer<QDialog> window_;
};

}  // namespace lumatile
