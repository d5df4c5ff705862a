#include "Lumatile/widgets/WindowKeys.h"

#include <QAction>
#include <QKeySequence>
#include <QWidget>

namespace lumatile {

namespace {

void add(QWidget& window, Qt::Key key, const std::function<void()>& act) {
    auto* action = new QAction(&window);
    action->setShortcut(QKeyCombination(Qt::ControlModifier, key));
    QObject::connect(action, &QAction::triggered, &window, [act] {
        if (act) {
            act();
        }
    });
    window.addAction(action);
}

}  // namespace

void WindowKeys::addTo(QWidget& window) const {
    add(window, Qt::Key_W, [&window] { window.close(); });
    add(window, Qt::Key_Comma, openSettings);
    add(window, Qt::Key_Q, quit);
}

}  // namespace lumatile
