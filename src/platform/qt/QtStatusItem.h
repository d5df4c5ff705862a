#pragma once

#include <QPointer>
#include <QSystemTrayIcon>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

#include "platform/qt/StatusMenuWidget.h"
#include "platform/qt/StatusNotifierHost.h"
#include "ports/StatusItem.h"

namespace lumatile {

/// The status item in whatever bar the session has: over the session bus, or in the older tray of
/// the X server. The toolkit chooses between the two once, so its icon is made only when there is a
/// bar, and the older tray is given some time in which the other kind may still come. Which of the
/// two it is then stays for the life of the process; a bar of the same kind that starts again is
/// found again.
class QtStatusItem final : public QObject, public StatusItem {
public:
    /// @param willDrawMenu called each time before the menu is drawn by this program and not by
    ///   the bar, for what its texts need
    explicit QtStatusItem(std::function<void()> willDrawMenu);
    QtStatusItem(const QtStatusItem&) = delete;
    QtStatusItem& operator=(const QtStatusItem&) = delete;
    ~QtStatusItem() override;

    void setImage(const StatusImage& image) override;
    void setMenu(StatusMenu menu, std::function<void()> menuWillOpen) override;
    void setStatusLine(std::size_t index, const StatusLine& line) override;
    void setChecked(std::size_t index, bool checked) override;

    /// How the menu writes shortcuts from now on.
    void setKeyTexts(KeyTexts keyTexts);

    /// To be called when the X server has a tray.
    void olderTrayAppeared();

private:
    void lookForBar();
    void create();
    void showImage();
    void openMenu();
    void menuWillOpen();

    std::function<void()> willDrawMenu_;
    KeyTexts keyTexts_;
    bool hasOlderTray_ = false;
    std::optional<StatusImage> image_;
    StatusMenu items_;
    std::function<void()> menuWillOpen_;

    StatusNotifierHost host_;                     ///< Its answer is there when it is wanted.
    QTimer patience_;                             ///< Runs while only the older tray is there.
    std::unique_ptr<StatusMenuWidget> exported_;  ///< For a bar that draws the menu itself.
    std::unique_ptr<QSystemTrayIcon> icon_;       ///< Once there is a bar; refers to `exported_`.
    std::unique_ptr<StatusMenuWidget> shown_;     ///< While, or since, it was last open.
};

}  // namespace lumatile
