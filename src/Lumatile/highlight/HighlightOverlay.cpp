#include "Lumatile/highlight/HighlightOverlay.h"

#include <QGuiApplication>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QRect>
#include <QScreen>
#include <QString>

#include <optional>
#include <vector>

#include "Lumatile/highlight/OverlayGeometry.h"
#include "displays/ScreenList.h"
#include "displays/ScreenLookup.h"
#include "geometry/Grid.h"
#include "ports/HighlightSurface.h"
#include "ports/Translucency.h"

namespace lumatile {

namespace {

// Seconds for which a hidden window is kept. A drag shows it again and again, and to make it and
// its picture anew each time costs more than all the rest of showing it.
constexpr double keptHidden = 2;

std::vector<ToolkitScreen> toolkitScreens(const QList<QScreen*>& screens) {
    std::vector<ToolkitScreen> result;
    result.reserve(static_cast<std::size_t>(screens.size()));
    for (const QScreen* screen : screens) {
        const QRectF frame = screen->geometry();
        result.push_back(
            {{frame.x(), frame.y(), frame.width(), frame.height()}, screen->devicePixelRatio()});
    }
    return result;
}

}  // namespace

HighlightOverlay::HighlightOverlay(ScreenList& screens, Translucency& translucency,
                                   RunLoop& runLoop, HighlightSurface* surface)
    : screens_(screens),
      translucency_(translucency),
      runLoop_(runLoop),
      surface_(surface),
      fade_(
          runLoop, [this](double alpha) { setAlpha(alpha); }, [this] { orderOut(); }) {
    // A window that the window manager does not know of: any other one would sink below full-screen
    // windows, stay on its virtual desktop, or swallow the click that drops.
    window_.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus |
                           Qt::X11BypassWindowManagerHint | Qt::NoDropShadowWindowHint);
    window_.setAttribute(Qt::WA_ShowWithoutActivating);
    // For those who look at the windows of a session.
    window_.setWindowTitle(QStringLiteral("Lumatile highlight"));
    window_.setWindowOpacity(0);
}

/// Whether a window can be seen through is settled when it is made.
void HighlightOverlay::setSolid(bool isSolid) {
    if (isSolid != view_.isSolid) {
        window_.hide();
        releaseWindow();
    }
    view_.isSolid = isSolid;
    // Where nothing is seen through, nothing has to be cleared before it is drawn over.
    window_.setAttribute(Qt::WA_TranslucentBackground, !isSolid);
    window_.setAttribute(Qt::WA_NoSystemBackground);
    view_.setAttribute(Qt::WA_OpaquePaintEvent, isSolid);
    fade_.isBlended = !isSolid;
}

void HighlightOverlay::makeWindow() {
    // Compositors give what accompanies a drag neither shadow nor animation. Only a window that
    // exists takes this attribute.
    window_.winId();
    window_.setAttribute(Qt::WA_X11NetWmWindowTypeDND);
}

void HighlightOverlay::orderOut() {
    if (isOnSurface_) {
        surface_->hide();
    } else {
        window_.hide();
    }
    rest_ = runLoop_.repeat(keptHidden, [this] { release(); });
}

void HighlightOverlay::release() {
    rest_.reset();
    if (isOnSurface_) {
        surface_->release();
    } else {
        releaseWindow();
    }
}

void HighlightOverlay::releaseWindow() {
    window_.clearMask();
    cutOut_ = {};
    window_.release();
}

/// The shape is as large a thing as the picture, and the same as long as the target is.
void HighlightOverlay::cutOut() {
    if (const HighlightView::Drawn wanted = view_.drawn(); wanted != cutOut_) {
        window_.setMask(view_.shape());
        cutOut_ = wanted;
    }
}

void HighlightOverlay::setAlpha(double alpha) {
    if (isOnSurface_) {
        surface_->setOpacity(alpha);
        return;
    }
    window_.setWindowOpacity(alpha);
    // The toolkit leaves the opacity lying until it has something else to send; a pixel will do.
    view_.update(0, 0, 1, 1);
}

Size HighlightOverlay::cellPitch(const Rect& frame) {
    const Rect visible = visibleFrameOfScreenContaining(screens_, frame.center()).value_or(frame);
    return Grid::cellSize(visible, orientationOf(visible));
}

void HighlightOverlay::show(const Rect& frame) {
    if (surface_ != nullptr && surface_->isAvailable()) {
        showOnSurface(frame);
    } else {
        showWindow(frame);
    }
}

void HighlightOverlay::showOnSurface(const Rect& frame) {
    isOnSurface_ = true;
    rest_.reset();
    const Size pitch = cellPitch(frame);
    const bool isShown = surface_->show(frame, [pitch](const HighlightSurface::Canvas& canvas) {
        QImage picture(static_cast<uchar*>(static_cast<void*>(canvas.pixels.data())), canvas.width,
                       canvas.height, QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(canvas.scale);
        QPainter painter(&picture);
        const Rect& panel = canvas.panel;
        HighlightView::draw(painter, {panel.x, panel.y, panel.width, panel.height}, pitch,
                            QRectF({}, picture.deviceIndependentSize()));
    });
    if (isShown) {
        fade_.fadeIn();
    } else {
        hide();
    }
}

void HighlightOverlay::showWindow(const Rect& frame) {
    isOnSurface_ = false;
    const QList<QScreen*> screens = QGuiApplication::screens();
    const std::vector<ToolkitScreen> known = toolkitScreens(screens);
    const std::optional<OverlayPlace> place = overlayPlace(frame, known);
    if (!place) {
        hide();
        return;
    }
    const double scale = known[place->screen].scale;
    const Size pitch = cellPitch(frame);
    view_.cellPitch = {pitch.width / scale, pitch.height / scale};
    view_.place = {place->panel.x, place->panel.y, place->panel.width, place->panel.height};
    setSolid(!translucency_.isAvailable());

    const QRect geometry =
        QRectF(place->window.x, place->window.y, place->window.width, place->window.height)
            .toRect();
    rest_.reset();
    if (!window_.isVisible()) {
        makeWindow();
    }
    window_.setScreen(screens[static_cast<qsizetype>(place->screen)]);
    window_.setGeometry(geometry);
    view_.setGeometry(QRect({}, geometry.size()));
    if (view_.isSolid) {
        cutOut();
    } else if (cutOut_ != HighlightView::Drawn{}) {
        window_.clearMask();
        cutOut_ = {};
    }
    view_.update();
    window_.show();
    // Windows that came since then may lie above.
    window_.raise();
    fade_.fadeIn();
}

void HighlightOverlay::hide() { fade_.fadeOut(); }

}  // namespace lumatile
