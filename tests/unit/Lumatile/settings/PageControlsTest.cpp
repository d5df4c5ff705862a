// What all pages of the settings have in common: the wheel, and where the controls of a card end.

#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/Card.h"
#include "tests/unit/Lumatile/settings/SettingsControls.h"

namespace lumatile {
namespace {

constexpr int notch = 120;  // Eighths of a degree.

/// A notch of the wheel away from the user, with the pointer over `widget`.
void wheel(QWidget& widget) {
    const QPointF middle = QRectF(widget.rect()).center();
    QWheelEvent event(middle, widget.mapToGlobal(middle), {}, {0, notch}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    // As one that comes from a real wheel, which goes on to what the widget stands in.
    QSpontaneKeyEvent::setSpontaneous(&event);
    QApplication::instance()->notify(&widget, &event);
    QApplication::processEvents();
}

class PageControls : public SettingsControls {
protected:
    /// A click that changes nothing by itself.
    static void clickInto(QWidget& control) {
        control.setFocus(Qt::MouseFocusReason);
        QMouseEvent press(QEvent::MouseButtonPress, {1, 1}, control.mapToGlobal(QPointF(1, 1)),
                          Qt::RightButton, Qt::RightButton, {});
        QApplication::sendEvent(&control, &press);
    }

    /// How far the page scrolls up by a notch over `control`, from its end, where that shows.
    static int scrolled(QWidget& control) {
        QWidget* around = control.parentWidget();
        while (dynamic_cast<QScrollArea*>(around) == nullptr) {
            around = around->parentWidget();
        }
        QScrollBar& bar = *dynamic_cast<QScrollArea*>(around)->verticalScrollBar();
        bar.setValue(bar.maximum());
        QApplication::processEvents();
        wheel(control);
        return bar.maximum() - bar.value();
    }
};

/// Whether a label of the general page shows the text.
bool isOnGeneralPage(SettingsStage& stage, std::string_view text) {
    stage.model().setSection(SettingsSection::general);
    stage.show();
    const auto labels = stage.window().findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(), [text](const QLabel* label) {
        return label->isVisible() && label->text().toStdString() == text;
    });
}

TEST(SessionCard, tellsWhatCannotBeDoneASentenceEach) {
    SettingsStage stage({"The first.", "The second."});
    EXPECT_TRUE(isOnGeneralPage(stage, "The first."));
    EXPECT_TRUE(isOnGeneralPage(stage, "The second."));
    EXPECT_TRUE(isOnGeneralPage(stage, SettingsTexts::thisSession));
}

TEST(SessionCard, isNotThereWhereEverythingCanBeDone) {
    SettingsStage stage;
    EXPECT_TRUE(isOnGeneralPage(stage, SettingsTexts::windowTiling));
    EXPECT_FALSE(isOnGeneralPage(stage, SettingsTexts::thisSession));
}

TEST_F(PageControls, theWheelScrollsThePageUntilAControlWasClickedInto) {
    stage.window().resize(920, 860);
    open(SettingsSection::oled);
    auto* strength = named<QSlider>(SettingsTexts::strength);
    auto* interval = named<QComboBox>(SettingsTexts::moveEvery);
    for (QWidget* control : std::initializer_list<QWidget*>{strength, interval}) {
        EXPECT_GT(scrolled(*control), 0);
        EXPECT_FALSE(control->hasFocus());
        control->setFocus(Qt::TabFocusReason);
        EXPECT_GT(scrolled(*control), 0) << "the Tab key is no click";
        EXPECT_TRUE(oledTold.empty());

        clickInto(*control);
        EXPECT_EQ(scrolled(*control), 0);
        EXPECT_EQ(oledTold.size(), 1U);

        named<ToggleSwitch>(SettingsTexts::dimWhenIdle)->setFocus(Qt::MouseFocusReason);
        EXPECT_GT(scrolled(*control), 0) << "another control has the keyboard now";
        EXPECT_EQ(oledTold.size(), 1U);
        oledTold.clear();
    }
}

TEST_F(PageControls, theWheelLeavesTheSharedFolderAlone) {
    open(SettingsSection::general);
    stage.desktop().sharedStore.setLocation("/home/user/shared");
    stage.desktop().advance(1);
    auto* location = named<QComboBox>(SettingsTexts::shareThrough);
    wheel(*location);
    EXPECT_EQ(stage.desktop().sharedStore.status().location, "/home/user/shared");
    EXPECT_EQ(location->currentIndex(), 1);
}

TEST_F(PageControls, theNamesOfTheUsersStayAsTheyAre) {
    const char* const name = "Mac ⌃⌥← iCloud";
    stage.vocabulary = Vocabulary::of({DesktopKind::xfce, true});
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    ASSERT_TRUE(stage.model().renameSelected(name));
    EXPECT_TRUE(shows(name));
    const UUID area = selected().id;
    stage.model().record({38, 6144, true});
    stage.model().select(stage.model().commands().front().id);
    stage.model().record({38, 6144, true});
    EXPECT_TRUE(shows(SettingsTexts::alreadyUsedBy("Bottom Left")));
    stage.model().select(area);
    stage.model().record({96, 6144, true});
    stage.model().select(stage.model().commands().front().id);
    stage.model().record({96, 6144, true});
    EXPECT_TRUE(shows(SettingsTexts::alreadyUsedBy(name)));
    auto* menu = stage.window().findChild<QMenu*>();
    emit menu->aboutToShow();
    EXPECT_EQ(menu->actions().last()->text(), name);
}

TEST(Card, aSpinBoxLeavesTheWheelAloneToo) {
    AppFonts::registerFonts();
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* card = new Card({});
    auto* spin = new QSpinBox;
    card->addRow(QStringLiteral("Count"), spin);
    column->addWidget(card);
    window.show();
    QApplication::processEvents();
    wheel(*spin);
    EXPECT_EQ(spin->value(), 0);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      spin->mapTo(&window, QPoint(5, spin->height() / 2)));
    ASSERT_TRUE(spin->hasFocus());
    wheel(*spin);
    EXPECT_EQ(spin->value(), 1);
}

TEST_F(PageControls, whatTheControlsOfACardShowEndsAtOneEdge) {
    open(SettingsSection::oled);
    const auto edge = [&](const QWidget& widget, int beyond = 0) {
        return widget.mapTo(&stage.window(), QPoint(widget.width() - beyond, 0)).x();
    };
    const int right = edge(*named<QComboBox>(SettingsTexts::moveEvery));
    for (const std::string_view text : {SettingsTexts::driftWindows, SettingsTexts::waitForPause,
                                        SettingsTexts::varyEdges, SettingsTexts::dimWhenIdle}) {
        EXPECT_EQ(edge(*named<ToggleSwitch>(text), ToggleSwitch::roomForFocus), right) << text;
    }
    for (const auto* label : stage.window().findChildren<QLabel*>()) {
        if (label->isVisible() && label->alignment().testFlag(Qt::AlignRight)) {
            EXPECT_EQ(edge(*label), right) << label->text().toStdString();
        }
    }
    for (const std::string_view text :
         {SettingsTexts::range, SettingsTexts::after, SettingsTexts::strength}) {
        EXPECT_EQ(edge(*named<QSlider>(text)), edge(*named<QSlider>(SettingsTexts::distance)));
    }
}

TEST_F(PageControls, theIntervalIsOffWhenNothingMovesWindows) {
    open(SettingsSection::oled);
    auto* interval = named<QComboBox>(SettingsTexts::moveEvery);
    auto* waits = named<ToggleSwitch>(SettingsTexts::waitForPause);
    const auto label = [&](std::string_view text) {
        for (const auto* each : stage.window().findChildren<QLabel*>()) {
            if (each->buddy() != nullptr && unmarked(each->text()).toStdString() == text) {
                return each;
            }
        }
        return static_cast<const QLabel*>(nullptr);
    };
    for (const bool orbit : {false, true}) {
        for (const bool jitter : {false, true}) {
            OLEDSettings oled = OLEDSettings::recommended;
            oled.orbitEnabled = orbit;
            oled.jitterEnabled = jitter;
            stage.model().setOLED(oled);
            const bool hasSteps = orbit || jitter;
            EXPECT_EQ(interval->isEnabled(), hasSteps);
            EXPECT_EQ(waits->isEnabled(), hasSteps);
            EXPECT_EQ(named<QSlider>(SettingsTexts::distance)->isEnabled(), orbit);
            ASSERT_NE(label(SettingsTexts::moveEvery), nullptr);
            EXPECT_EQ(label(SettingsTexts::moveEvery)->isEnabled(), hasSteps);
            EXPECT_EQ(label(SettingsTexts::distance)->isEnabled(), orbit);
        }
    }
}

}  // namespace
}  // namespace lumatile
