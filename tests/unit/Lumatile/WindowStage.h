#pragma once

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QFontInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QString>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/Saying.h"
#include "onboarding/Vocabulary.h"

namespace lumatile {

/// What a test of a window sees and does, with the toolkit but without any screen.
struct WindowStage {
    WindowStage() {
        static const bool areFontsRegistered = [] {
            AppFonts::registerFonts();
            return true;
        }();
        (void)areFontsRegistered;
    }

    /// In the words of `vocabulary`.
    Saying saying() {
        return [this](std::string_view text) {
            return QString::fromStdString(vocabulary.apply(text));
        };
    }

    /// Every text that can be seen, as it is read.
    static std::vector<std::string> texts(QWidget& window) {
        std::vector<std::string> found;
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty()) {
                found.push_back(label->text().toStdString());
            }
        }
        return found;
    }

    static bool shows(QWidget& window, std::string_view text) {
        const auto all = texts(window);
        return std::find(all.begin(), all.end(), text) != all.end();
    }

    static std::vector<QPushButton*> buttons(QWidget& window) {
        std::vector<QPushButton*> found;
        for (QPushButton* button : window.findChildren<QPushButton*>()) {
            if (button->isVisible()) {
                found.push_back(button);
            }
        }
        return found;
    }

    /// The button on screen that a screen reader knows by that name; null when there is none.
    static QPushButton* button(QWidget& window, std::string_view name) {
        for (QPushButton* each : buttons(window)) {
            const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(each);
            if (seen != nullptr && seen->text(QAccessible::Name).toStdString() == name) {
                return each;
            }
        }
        return nullptr;
    }

    static void press(QWidget& window, int key) {
        QWidget* receiver = window.focusWidget() != nullptr ? window.focusWidget() : &window;
        QKeyEvent down(QEvent::KeyPress, key, {});
        QApplication::sendEvent(receiver, &down);
        QKeyEvent up(QEvent::KeyRelease, key, {});
        QApplication::sendEvent(receiver, &up);
    }

    /// Every label and button has the room that its text needs.
    static void expectNothingIsClipped(QWidget& window) {
        QApplication::processEvents();
        for (QLabel* label : window.findChildren<QLabel*>()) {
            if (!label->isVisible() || label->text().isEmpty()) {
                continue;
            }
            const int needed = label->hasHeightForWidth() ? label->heightForWidth(label->width())
                                                          : label->sizeHint().height();
            EXPECT_GE(label->height(), needed) << label->text().toStdString();
            if (!label->wordWrap()) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
            }
            if (!isScrolled(*label)) {
                expectIsInside(*label, window);
            }
        }
        for (QPushButton* each : buttons(window)) {
            EXPECT_GE(each->width(), each->sizeHint().width()) << each->text().toStdString();
            EXPECT_GE(each->height(), each->sizeHint().height()) << each->text().toStdString();
            expectIsInside(*each, window);
        }
    }

    static void save(QWidget& window, const std::string& name) {
        QApplication::processEvents();
        const QPixmap picture = window.grab();
        ASSERT_FALSE(picture.isNull());
        ASSERT_TRUE(QDir().mkpath(QStringLiteral(LUMATILE_PICTURES)));
        const QString scale = QString::number(window.devicePixelRatioF());
        ASSERT_TRUE(picture.save(QStringLiteral(LUMATILE_PICTURES "/%1-%2.png")
                                     .arg(QString::fromStdString(name), scale)));
    }

    Vocabulary vocabulary = Vocabulary::reference();

private:
    /// Whether the screen has no room for the whole of what the widget is part of.
    static bool isScrolled(const QWidget& widget) {
        for (const QWidget* each = widget.parentWidget(); each != nullptr;
             each = each->parentWidget()) {
            if (const auto* area = qobject_cast<const QScrollArea*>(each)) {
                return area->verticalScrollBar()->maximum() > 0;
            }
        }
        return false;
    }

    static void expectIsInside(const QWidget& widget, const QWidget& window) {
        const QRect place(widget.mapTo(&window, QPoint(0, 0)), widget.size());
        EXPECT_TRUE(window.rect().contains(place))
            << place.x() << ',' << place.y() << ' ' << place.width() << 'x' << place.height();
    }
};

/// The text size of the desktop, for as long as it lives.
class DesktopFont {
public:
    explicit DesktopFont(double factor) : before_(QApplication::font()) {
        QFont larger = before_;
        larger.setPixelSize(static_cast<int>(QFontInfo(before_).pixelSize() * factor));
        QApplication::setFont(larger);
    }
    DesktopFont(const DesktopFont&) = delete;
    DesktopFont& operator=(const DesktopFont&) = delete;
    ~DesktopFont() { QApplication::setFont(before_); }

private:
    QFont before_;
};

}  // namespace lumatile
