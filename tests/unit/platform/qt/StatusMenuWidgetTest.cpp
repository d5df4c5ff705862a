#include "platform/qt/StatusMenuWidget.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFontDatabase>
#include <QImage>
#include <QTest>

#include <algorithm>
#include <memory>

namespace lumatile {
namespace {

using Use = StatusMenuWidget::Use;

StatusLine line(const std::string& text) {
    return {text, {text, "IBMPlexMono-Regular", 12, StatusText::Color::secondaryLabel}};
}

TEST(StatusMenuWidget, hasAnActionForEveryItem) {
    StatusMenuWidget widget(Use::shown);
    ClosureMenuItem checked("Checked", {}, {});
    checked.isChecked = true;
    ClosureMenuItem disabled("Disabled", {}, {});
    disabled.isEnabled = false;
    widget.fill({line("line"), MenuSeparator{}, MenuHeader{"Your Areas"},
                 ClosureMenuItem("Left", KeyEquivalent::ofHotKey("←", 6144), {}), checked,
                 disabled});
    const QList<QAction*> actions = widget.menu().actions();
    ASSERT_EQ(actions.size(), 6);
    EXPECT_EQ(actions[0]->text(), "line");
    EXPECT_FALSE(actions[0]->isEnabled());
    EXPECT_EQ(actions[0]->font().pixelSize(), 12);
    const QString packaged = "IBM Plex Mono";
    EXPECT_EQ(actions[0]->font().family(),
              QFontDatabase::hasFamily(packaged)
                  ? packaged
                  : QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_EQ(actions[2]->text(), "Your Areas");
    EXPECT_FALSE(actions[2]->isEnabled());
    EXPECT_EQ(actions[3]->shortcut(), QKeySequence("Ctrl+Alt+Left"));
    EXPECT_TRUE(actions[3]->isEnabled());
    EXPECT_FALSE(actions[3]->isCheckable());
    EXPECT_TRUE(actions[4]->isChecked());
    EXPECT_FALSE(actions[5]->isEnabled());
}

TEST(StatusMenuWidget, keysAreWrittenAsTheDesktopDoes) {
    std::string z = "Y";
    const KeyTexts texts{[&](std::string_view glyphs) { return "<" + std::string(glyphs) + ">"; },
                         [&](std::string_view key) { return key == "Z" ? z : std::string(key); },
                         [](std::uint32_t /*keyCode*/) { return std::string("F5"); }};
    const StatusMenu items{ClosureMenuItem("Mac ⌃", KeyEquivalent::ofHotKey("z", 6400), {}),
                           ClosureMenuItem("Settings…", KeyEquivalent::ofMenu("z"), {}),
                           ClosureMenuItem("About", {}, {}),
                           ClosureMenuItem("Mine", KeyEquivalent::ofHotKey("?", 6144, 96), {})};
    StatusMenuWidget shown(Use::shown, texts);
    shown.fill(items);
    EXPECT_EQ(shown.menu().actions()[0]->text(), "Mac ⌃\t<⌃⌥⌘Z>");
    EXPECT_EQ(shown.menu().actions()[1]->text(), "Settings…");
    EXPECT_EQ(shown.menu().actions()[1]->shortcut(), QKeySequence("Ctrl+Z")) << "is no hot key";
    EXPECT_EQ(shown.menu().actions()[2]->text(), "About");
    EXPECT_EQ(shown.menu().actions()[3]->text(), "Mine\t<⌃⌥>F5");

    StatusMenuWidget exported(Use::exported, texts);
    exported.fill(items);
    EXPECT_EQ(exported.menu().actions()[0]->text(), "Mac ⌃");
    EXPECT_EQ(exported.menu().actions()[0]->shortcut(), QKeySequence("Ctrl+Alt+Meta+Y"));
    EXPECT_EQ(exported.menu().actions()[3]->shortcut(), QKeySequence("Ctrl+Alt+F5"));
    z = "Ö";
    exported.refreshKeys(items);
    EXPECT_EQ(exported.menu().actions()[0]->shortcut(), QKeySequence("Ctrl+Alt+Meta+Ö"));
}

TEST(StatusMenuWidget, onADarkDesktopALineIsFainterThanAnItem) {
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    for (const auto role : {QPalette::Window, QPalette::Base}) {
        dark.setColor(role, QColor(40, 40, 44));
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(role, Qt::white);
    }
    QApplication::setPalette(dark);
    StatusMenuWidget widget(Use::shown);
    widget.fill({line("Pixel shift: off"), ClosureMenuItem("Item", {}, {})});
    widget.menu().resize(widget.menu().sizeHint());
    const QImage picture = widget.menu().grab().toImage();
    const auto brightest = [&](int index) {
        const QRect row = widget.menu().actionGeometry(widget.menu().actions()[index]);
        int lightness = 0;
        for (int y = row.top(); y <= row.bottom(); ++y) {
            for (int x = row.left(); x <= row.right(); ++x) {
                lightness = std::max(lightness, picture.pixelColor(x, y).lightness());
            }
        }
        return lightness;
    };
    EXPECT_GT(brightest(1), 220);
    EXPECT_GT(brightest(0), 100);
    EXPECT_LT(brightest(0), 190);
    QApplication::setPalette(before);
}

TEST(StatusMenuWidget, aTitleReadsAsItIs) {
    EXPECT_EQ(StatusMenuWidget::literalTitle("A & B & C", Use::shown), "A && B && C");
    EXPECT_EQ(StatusMenuWidget::literalTitle("my_area", Use::shown), "my_area");
    EXPECT_EQ(StatusMenuWidget::literalTitle("my_area", Use::exported), "my__area");
    // The toolkit makes "_A & B & C" of it, which a bar shows without the underscore.
    EXPECT_EQ(StatusMenuWidget::literalTitle("A & B & C", Use::exported), "&A & B & C");
    EXPECT_EQ(StatusMenuWidget::literalTitle("Left Half", Use::exported), "Left Half");
}

TEST(StatusMenuWidget, linesAndMarksChangeInPlace) {
    StatusMenuWidget widget(Use::exported);
    widget.fill({line("old"), ClosureMenuItem("Item", {}, {})});
    const QList<QAction*> before = widget.menu().actions();
    widget.setStatusLine(0, line("new"));
    widget.setChecked(1, true);
    widget.setStatusLine(2, line("beyond"));
    widget.setChecked(2, true);
    EXPECT_EQ(widget.menu().actions(), before);
    EXPECT_EQ(before[0]->text(), "new");
    EXPECT_TRUE(before[1]->isChecked());
    widget.setChecked(1, false);
    EXPECT_FALSE(before[1]->isChecked());
}

TEST(StatusMenuWidget, whatIsChosenRunsAfterTheMenuIsDoneWithIt) {
    auto widget = std::make_unique<StatusMenuWidget>(Use::shown);
    int fired = 0;
    widget->fill({ClosureMenuItem("Item", {}, [&] {
        ++fired;
        widget.reset();
    })});
    widget->menu().actions().front()->trigger();
    EXPECT_EQ(fired, 0);
    QApplication::processEvents();
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(widget, nullptr);
}

TEST(StatusMenuWidget, aMenuMayBeReplacedByAnItemOfItsOwn) {
    StatusMenuWidget widget(Use::exported);
    widget.fill({ClosureMenuItem("Item", {}, [&] { widget.fill({MenuHeader{"Other"}}); })});
    widget.menu().actions().front()->trigger();
    QApplication::processEvents();
    ASSERT_EQ(widget.menu().actions().size(), 1);
    EXPECT_EQ(widget.menu().actions().front()->text(), "Other");
}

TEST(StatusMenuWidget, itsKeysAreNotTakenFromTheProgramsWindows) {
    StatusMenuWidget widget(Use::exported);
    int fired = 0;
    widget.fill({ClosureMenuItem("Quit", KeyEquivalent::ofMenu("q"), [&] { ++fired; })});
    QWidget window;
    QAction own;
    own.setShortcut(QKeySequence("Ctrl+Q"));
    int heard = 0;
    QObject::connect(&own, &QAction::triggered, [&] { ++heard; });
    window.addAction(&own);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    QApplication::processEvents();
    // Had both been listening, the toolkit would have found the keys ambiguous and told nobody.
    EXPECT_EQ(heard, 1);
    window.removeAction(&own);
    QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    QApplication::processEvents();
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(fired, 0);
}

}  // namespace
}  // namespace lumatile
