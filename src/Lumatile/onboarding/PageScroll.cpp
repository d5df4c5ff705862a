#include "Lumatile/onboarding/PageScroll.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QWidget>

namespace lumatile {

QWidget* scrolledAbove(QWidget* content, QPushButton* button, int leastWidth) {
    constexpr int margin = 28;
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("page"));
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, margin);
    content->setObjectName(QStringLiteral("page"));
    auto* scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // By the keyboard it is scrolled with the button focused: there is nothing to reach in it.
    scroll->setFocusPolicy(Qt::NoFocus);
    button->setProperty("tone", QStringLiteral("primary"));
    button->setMinimumWidth(leastWidth);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(button);
    row->addStretch(1);
    layout->addWidget(scroll, 1);
    layout->addLayout(row);
    return page;
}

}  // namespace lumatile
