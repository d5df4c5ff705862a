#include "platform/qt/StatusMenuWidget.h"

#include <QAction>
#include <QCoreApplication>
#include <QFont>
#include <QFontDatabase>
#include <QMetaObject>
#include <QPalette>
#include <QString>

#include <algorithm>
#include <cmath>
#include <utility>
#include <variant>

namespace lumatile {

namespace {

// Of the text's own colour: 4.6 to 1 in black on white, which is still easily read.
constexpr float secondaryOpacity = 0.54F;

/// "IBMPlexMono-Regular" names the family "IBM Plex Mono": the packaged names have no blanks.
QString familyOf(const std::string& fontName) {
    return fontName == "IBMPlexMono-Regular" ? QStringLiteral("IBM Plex Mono")
                                             : QString::fromStdString(fontName);
}

QFont fontOf(const StatusText& text) {
    const QString family = familyOf(text.fontName);
    QFont font = QFontDatabase::hasFamily(family)
                     ? QFont(family)
                     : QFontDatabase::systemFont(QFontDatabase::FixedFont);
    // Points of the description are pixels at a scale of one.
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(text.pointSize))));
    return font;
}

}  // namespace

StatusMenuWidget::StatusMenuWidget(Use use, KeyTexts keyTexts)
    : use_(use), keyTexts_(std::move(keyTexts)) {
    if (use_ == Use::exported) {
        return;
    }
    // What cannot be chosen is there to be read; the toolkit's colour for it is fainter than the
    // secondary colour of a text.
    QPalette palette = menu_.palette();
    QColor secondary = palette.color(QPalette::Active, QPalette::Text);
    secondary.setAlphaF(secondaryOpacity);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, secondary);
    }
    // Without the second, lighter print below it: on a dark menu that is brighter than the text.
    palette.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent);
    menu_.setPalette(palette);
}

QString StatusMenuWidget::literalTitle(const std::string& title, Use use) {
    QString text = QString::fromStdString(title);
    if (use == Use::shown) {
        return text.replace(QLatin1Char('&'), QLatin1String("&&"));
    }
    // Bars take an underscore for the mark of an access key, doubled for itself. The toolkit makes
    // such a mark of the first ampersand and leaves the others: the first has to be one too many.
    text.replace(QLatin1Char('_'), QLatin1String("__"));
    return text.contains(QLatin1Char('&')) ? QLatin1Char('&') + text : text;
}

void StatusMenuWidget::fill(const StatusMenu& items) {
    menu_.clear();
    actions_.clear();
    actions_.reserve(items.size());
    for (const StatusMenuItem& item : items) {
        actions_.push_back(std::visit([this](const auto& each) { return add(each); }, item));
    }
}

void StatusMenuWidget::setStatusLine(std::size_t index, const StatusLine& line) {
    if (index < actions_.size()) {
        dress(*actions_[index], line);
    }
}

void StatusMenuWidget::setChecked(std::size_t index, bool checked) {
    if (index < actions_.size()) {
        actions_[index]->setCheckable(true);
        actions_[index]->setChecked(checked);
    }
}

void StatusMenuWidget::refreshKeys(const StatusMenu& items) {
    for (std::size_t i = 0; i < std::min(items.size(), actions_.size()); ++i) {
        if (const auto* item = std::get_if<ClosureMenuItem>(&items[i])) {
            writeKeys(*actions_[i], *item);
        }
    }
}

void StatusMenuWidget::writeKeys(QAction& action, const ClosureMenuItem& item) const {
    action.setShortcut(keySequenceOf(item.keyEquivalent, keyTexts_));
    // A bar writes the keys in its own way; the toolkit has a name for the Super key that is on no
    // keyboard.
    if (use_ == Use::shown && keyTexts_.written && !item.keyEquivalent.key.empty() &&
        item.keyEquivalent.reach == KeyEquivalent::Reach::desktop) {
        action.setText(literalTitle(item.title, use_) + QLatin1Char('\t') +
                       QString::fromStdString(writtenKeys(item.keyEquivalent, keyTexts_)));
    }
}

QAction* StatusMenuWidget::add(const StatusLine& line) {
    QAction* const action = menu_.addAction(QString());
    action->setEnabled(false);
    dress(*action, line);
    return action;
}

QAction* StatusMenuWidget::add(const ClosureMenuItem& item) {
    QAction* const action = menu_.addAction(literalTitle(item.title, use_));
    action->setEnabled(item.isEnabled);
    if (item.isChecked) {
        action->setCheckable(true);
        action->setChecked(true);
    }
    // To be read, not to be listened for: hot keys have their own way, and a key that the toolkit
    // took here would be missing in the program's windows.
    action->setShortcutContext(Qt::WidgetShortcut);
    writeKeys(*action, item);
    QObject::connect(action, &QAction::triggered, &menu_, [item] {
        // The closure may replace this menu, or end the program.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [item] { item.fire(); }, Qt::QueuedConnection);
    });
    return action;
}

QAction* StatusMenuWidget::add(const MenuHeader& header) {
    // Sections with a title come out of the export as bare lines.
    QAction* const action = menu_.addAction(literalTitle(header.title, use_));
    action->setEnabled(false);
    return action;
}

QAction* StatusMenuWidget::add(const MenuSeparator& /*separator*/) { return menu_.addSeparator(); }

void StatusMenuWidget::dress(QAction& action, const StatusLine& line) const {
    action.setText(literalTitle(line.title, use_));
    // A bar draws in its own way; and looking for fonts costs memory. The secondary colour is the
    // menu's for disabled items.
    if (use_ == Use::shown && !line.attributedTitle.fontName.empty()) {
        action.setFont(fontOf(line.attributedTitle));
    }
}

}  // namespace lumatile
