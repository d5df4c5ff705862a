#include "Lumatile/settings/Mnemonics.h"

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace lumatile {

namespace {

/// Any keyboard has the Latin letters; others may not be where the toolkit looks for them.
bool isLetter(QChar letter) {
    const QChar lower = letter.toLower();
    return lower >= u'a' && lower <= u'z';
}

bool beginsWord(const QString& text, qsizetype index) {
    return index == 0 || !text[index - 1].isLetterOrNumber();
}

}  // namespace

void Mnemonics::assign(QWidget& page) {
    Mnemonics mnemonics;
    for (QWidget* widget : page.findChildren<QWidget*>()) {
        auto* label = qobject_cast<QLabel*>(widget);
        if (auto* button = qobject_cast<QPushButton*>(widget)) {
            button->setText(mnemonics.mark(button->text()));
        } else if (label != nullptr && label->buddy() != nullptr) {
            label->setText(mnemonics.mark(label->text()));
        }
    }
}

QString Mnemonics::mark(const QString& text) {
    for (const bool onlyFirst : {true, false}) {
        for (qsizetype index = 0; index < text.size(); ++index) {
            if (isLetter(text[index]) && (!onlyFirst || beginsWord(text, index)) &&
                taken_.insert(text[index].toLower()).second) {
                return QString(text).insert(index, u'&');
            }
        }
    }
    return text;
}

}  // namespace lumatile
