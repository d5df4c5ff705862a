#include "Lumatile/widgets/WindowForeground.h"

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QObject>
#include <QTimer>
#include <QWidget>

#include <cstdint>
#include <cstring>
#include <utility>

namespace lumatile {

namespace {

/// Activates a window of an X server once more, as soon as the toolkit has been told of a change of
/// one of the window's properties: it takes the time that it states in its requests from that.
class FreshActivation final : public QObject, public QAbstractNativeEventFilter {
public:
    /// @param window owns this
    explicit FreshActivation(QWidget& window) : QObject(&window), window_(window) {
        QCoreApplication::instance()->installNativeEventFilter(this);
        // Written anew although it is the same.
        window.setWindowRole(window.windowRole());
    }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) override {
        if (!isDue_ && type == "xcb_generic_event_t" && isPropertyOfWindow(message)) {
            isDue_ = true;
            // The toolkit looks at the event after this.
            QTimer::singleShot(0, this, [this] {
                if (window_.isVisible()) {
                    window_.activateWindow();
                }
                deleteLater();
            });
        }
        return false;
    }

private:
    /// By the layout of events in the protocol: a code, and for this kind the window as the second
    /// word.
    bool isPropertyOfWindow(const void* event) const {
        constexpr std::uint8_t codeBits = 0x7f;  // The other says that a client has sent it.
        constexpr std::uint8_t propertyNotify = 28;
        constexpr std::size_t windowOffset = 4;
        const auto* bytes = static_cast<const std::uint8_t*>(event);
        std::uint32_t window = 0;
        std::memcpy(&window, bytes + windowOffset, sizeof window);
        return (*bytes & codeBits) == propertyNotify && window == window_.effectiveWinId();
    }

    QWidget& window_;
    bool isDue_ = false;
};

/// Of the desktop that the whole process runs on, as the toolkit's connection to it is.
std::function<void(std::string_view)>& desktopsFront() {
    static std::function<void(std::string_view)> bring;
    return bring;
}

}  // namespace

void bringToFront(QWidget& window) {
    if (window.isMinimized()) {
        window.showNormal();
    } else {
        window.show();
    }
    window.raise();
    window.activateWindow();
}

void bringToFrontNow(QWidget& window) {
    bringToFront(window);
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        new FreshActivation(window);
    }
    if (desktopsFront()) {
        desktopsFront()(window.windowTitle().toStdString());
    }
}

void askDesktopForFront(std::function<void(std::string_view title)> bring) {
    desktopsFront() = std::move(bring);
}

}  // namespace lumatile
