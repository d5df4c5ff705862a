#include "Lumatile/conflict/SyncConflictView.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

#include "Lumatile/conflict/EditedTime.h"
#include "Lumatile/conflict/SyncConflictTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "Lumatile/widgets/ViewText.h"
#include "Lumatile/widgets/WidgetColors.h"

namespace lumatile {

namespace {

constexpr double headingPoints = 17;
constexpr double textPoints = 13;
constexpr double editedPoints = 12;
constexpr double badgePoints = 11;
constexpr double symbolPoints = 40;
constexpr int margin = 22;
constexpr int gap = 12;

}  // namespace

SyncConflictView::SyncConflictView(Saying say, std::function<void(bool)> choose, QWidget* parent)
    : QWidget(parent), say_(std::move(say)), choose_(std::move(choose)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(gap);
    auto* top = new QHBoxLayout;
    top->setSpacing(gap + 4);
    auto* symbol = new QLabel;
    const int side = static_cast<int>(std::lround(symbolPoints * AppFonts::pixelsPerPoint()));
    symbol->setPixmap(SymbolIcon::pixmap(SyncConflictTexts::symbol, WidgetColors::accent(), side,
                                         devicePixelRatioF()));
    top->addWidget(symbol, 0, Qt::AlignTop);
    auto* words = new QVBoxLayout;
    words->setSpacing(6);
    auto* heading = new QLabel(say_(SyncConflictTexts::heading));
    heading->setFont(AppFonts::text(headingPoints, QFont::Bold));
    auto* explanation = new QLabel(say_(SyncConflictTexts::explanation));
    explanation->setFont(AppFonts::text(textPoints));
    explanation->setWordWrap(true);
    explanation->setProperty("tone", QStringLiteral("secondary"));
    words->addWidget(heading);
    words->addWidget(explanation);
    top->addLayout(words, 1);
    layout->addLayout(top);
    layout->addStretch(1);
    auto* choices = new QHBoxLayout;
    choices->setSpacing(gap);
    local_ = makeChoice(SyncConflictTexts::localCopy, SyncConflictTexts::keepLocal, true);
    remote_ = makeChoice(SyncConflictTexts::remoteCopy, SyncConflictTexts::useRemote, false);
    choices->addWidget(local_.card, 1);
    choices->addWidget(remote_.card, 1);
    layout->addLayout(choices);
    setFocusPolicy(Qt::ClickFocus);
}

SyncConflictView::Choice SyncConflictView::makeChoice(std::string_view copy, std::string_view title,
                                                      bool preferLocal) {
    constexpr int inside = 14;
    auto* card = new QFrame;
    card->setObjectName(QStringLiteral("card"));
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(inside, inside, inside, inside);
    layout->setSpacing(4);
    auto* top = new QHBoxLayout;
    auto* name = new QLabel(say_(copy));
    name->setFont(AppFonts::text(textPoints, QFont::DemiBold));
    auto* edited = new QLabel;
    edited->setFont(AppFonts::text(editedPoints));
    edited->setTextFormat(Qt::PlainText);
    auto* differences = new QLabel;
    differences->setFont(AppFonts::text(editedPoints));
    differences->setTextFormat(Qt::PlainText);
    differences->setWordWrap(true);
    differences->setProperty("tone", QStringLiteral("secondary"));
    auto* badge = new QLabel(say_(SyncConflictTexts::newer));
    badge->setObjectName(QStringLiteral("badge"));
    badge->setFont(AppFonts::text(badgePoints, QFont::DemiBold));
    QSizePolicy asIfShown = badge->sizePolicy();
    asIfShown.setRetainSizeWhenHidden(true);
    badge->setSizePolicy(asIfShown);
    top->addWidget(name, 1);
    top->addWidget(badge, 0, Qt::AlignTop);
    auto* button = new QPushButton(withoutMnemonic(say_(title)));
    // The window may come up while the user is typing elsewhere: no key that is on its way may
    // choose.
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, preferLocal] { choose_(preferLocal); });
    layout->addLayout(top);
    layout->addWidget(edited);
    layout->addWidget(differences);
    layout->addStretch(1);
    layout->addSpacing(gap - layout->spacing());
    layout->addWidget(button);
    return {card, button, edited, badge, differences};
}

void SyncConflictView::keyPressEvent(QKeyEvent* event) {
    // What a button of a dialog that has no default one leaves alone.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        for (const Choice* choice : {&local_, &remote_}) {
            if (choice->button->hasFocus()) {
                choice->button->click();
                return;
            }
        }
    }
    QWidget::keyPressEvent(event);
}

void SyncConflictView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    setFocus(Qt::OtherFocusReason);
}

void SyncConflictView::show(const ConflictSummary& summary,
                            const ConflictDifferences& differences) {
    summary_ = summary;
    showCopy(local_, summary.localTimestamp, summary.localTimestamp > summary.remoteTimestamp,
             differences.local);
    showCopy(remote_, summary.remoteTimestamp, summary.remoteTimestamp > summary.localTimestamp,
             differences.remote);
}

void SyncConflictView::showCopy(const Choice& choice, double timestamp, bool isNewer,
                                const std::string& differences) {
    const QString edited =
        say_(SyncConflictTexts::edited) + editedTime(timestamp, QLocale::system());
    choice.edited->setText(edited);
    choice.badge->setVisible(isNewer);
    const QString what = QString::fromStdString(differences);
    choice.differences->setText(what);
    choice.differences->setVisible(!what.isEmpty());
    // What stands above the button, for whoever hears it alone.
    QStringList described{edited};
    if (isNewer) {
        described.push_back(say_(SyncConflictTexts::newer));
    }
    if (!what.isEmpty()) {
        described.push_back(what);
    }
    choice.button->setAccessibleDescription(described.join(QStringLiteral(", ")));
}

}  // namespace lumatile
