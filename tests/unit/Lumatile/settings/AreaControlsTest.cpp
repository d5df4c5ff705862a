// The list of areas, their names and the grid.

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "Lumatile/settings/AreaRows.h"
#include "Lumatile/settings/GridEditorView.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/WidgetColors.h"
#include "tests/support/Contrast.h"
#include "tests/unit/Lumatile/settings/SettingsControls.h"

namespace lumatile {
namespace {

TEST_F(SettingsControls, anAreaIsMadeNamedAndDeleted) {
    open(SettingsSection::commands);
    named<QToolButton>(SettingsTexts::newArea)->click();
    EXPECT_EQ(selected().displayName(), "Custom Area");
    EXPECT_TRUE(shows(SettingsTexts::dragForCustom));
    auto* name = named<QLineEdit>(SettingsTexts::name);
    EXPECT_TRUE(name->hasFocus()) << "it can be typed over at once";
    EXPECT_EQ(name->selectedText().toStdString(), "Custom Area");
    for (const char letter : std::string("Mail")) {
        QKeyEvent event(QEvent::KeyPress, 0, {}, QString(QLatin1Char(letter)));
        QApplication::sendEvent(name, &event);
    }
    EXPECT_EQ(selected().displayName(), "Custom Area") << "not before it is left";
    press(*name, Qt::Key_Return);
    EXPECT_EQ(selected().displayName(), "Mail");
    EXPECT_EQ(group(true).currentItem()->text().toStdString(), "Mail");
    named<QToolButton>(SettingsTexts::deleteThisArea)->click();
    EXPECT_EQ(stage.model().selected(), nullptr);
    EXPECT_TRUE(shows(SettingsTexts::selectAnArea));
    EXPECT_FALSE(named<QToolButton>(SettingsTexts::deleteThisArea)->isEnabled());
}

TEST_F(SettingsControls, aBlankNameIsRefused) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    auto* name = named<QLineEdit>(SettingsTexts::name);
    name->selectAll();
    press(*name, Qt::Key_Backspace);
    press(*name, Qt::Key_Return);
    EXPECT_EQ(name->text().toStdString(), "Custom Area");
    EXPECT_EQ(selected().displayName(), "Custom Area");
}

TEST_F(SettingsControls, draggingAcrossTheGridEditsOnce) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    QApplication::processEvents();
    auto* grid = all<GridEditorView>().at(0);
    ASSERT_NE(grid, nullptr);
    mouse(*grid, QEvent::MouseButtonPress, middleOf(*grid, {2, 3}, Axis::horizontal));
    mouse(*grid, QEvent::MouseMove, middleOf(*grid, {5, 5}, Axis::horizontal));
    mouse(*grid, QEvent::MouseMove, middleOf(*grid, {7, 8}, Axis::horizontal));
    EXPECT_EQ(commandChanges, 0);
    EXPECT_NE(grid->accessibleName().indexOf(QStringLiteral("column 3, row 4")), -1);
    mouse(*grid, QEvent::MouseButtonRelease, middleOf(*grid, {7, 8}, Axis::horizontal));
    EXPECT_EQ(commandChanges, 1);
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{2, 3, 6, 6}}));
    named<QPushButton>(SettingsTexts::restoreDefaultArea)->click();
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{0, 0, 12, 12}}));
}

TEST_F(SettingsControls, aClickThatSlipsPaintsNothing) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    QApplication::processEvents();
    auto* grid = all<GridEditorView>().at(0);
    const QPointF at = middleOf(*grid, {2, 3}, Axis::horizontal);
    mouse(*grid, QEvent::MouseButtonPress, at);
    mouse(*grid, QEvent::MouseMove, at + QPointF(2, 2));
    mouse(*grid, QEvent::MouseButtonRelease, at + QPointF(2, 2));
    EXPECT_EQ(commandChanges, 0);
}

TEST_F(SettingsControls, aDragFromOutsideTheGridStartsAtItsEdge) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    QApplication::processEvents();
    auto* grid = all<GridEditorView>().at(0);
    mouse(*grid, QEvent::MouseButtonPress, {0.5, 0.5});
    mouse(*grid, QEvent::MouseMove, middleOf(*grid, {1, 1}, Axis::horizontal));
    mouse(*grid, QEvent::MouseButtonRelease, middleOf(*grid, {1, 1}, Axis::horizontal));
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{0, 0, 2, 2}}));
}

/// The grid shows what is stored, however the drawing was cut short.
TEST_F(SettingsControls, aDrawingThatIsCutShortComesToNothing) {
    open(SettingsSection::commands);
    const std::vector<std::function<void()>> cuts{
        [&] { stage.window().close(); },
        [&] { stage.model().setSection(SettingsSection::oled); },
        [&] { stage.model().select(std::nullopt); },
        [&] { stage.model().replace({}, stage.model().oled()); },
        // The release went to another program: the next that is heard is the pointer without it.
        [&] {
            auto* grid = all<GridEditorView>().at(0);
            const QPointF at = middleOf(*grid, {9, 9}, Axis::horizontal);
            QMouseEvent event(QEvent::MouseMove, at, grid->mapToGlobal(at), Qt::NoButton,
                              Qt::NoButton, {});
            QApplication::sendEvent(grid, &event);
        },
    };
    for (std::size_t cut = 0; cut < cuts.size(); ++cut) {
        selectBuiltIn(0);
        auto* grid = all<GridEditorView>().at(0);
        mouse(*grid, QEvent::MouseButtonPress, middleOf(*grid, {2, 3}, Axis::horizontal));
        mouse(*grid, QEvent::MouseMove, middleOf(*grid, {5, 5}, Axis::horizontal));
        ASSERT_FALSE(stage.model().painted() == selected()) << cut;
        cuts[cut]();
        stage.model().replace(BuiltInCommands::defaults(), stage.model().oled());
        stage.show();
        open(SettingsSection::commands);
        selectBuiltIn(0);
        EXPECT_TRUE(stage.model().painted() == selected()) << cut;
        EXPECT_EQ(grid->accessibleName().toStdString(), GridEditorLayout::label(selected())) << cut;
        mouse(*grid, QEvent::MouseMove, middleOf(*grid, {7, 7}, Axis::horizontal));
        mouse(*grid, QEvent::MouseButtonRelease, middleOf(*grid, {7, 7}, Axis::horizontal));
        EXPECT_TRUE(stage.model().commands() == BuiltInCommands::defaults()) << cut;
        EXPECT_EQ(commandChanges, 0) << cut;
    }
}

TEST_F(SettingsControls, theDefaultAreaIsOfferedOnlyWhereSomethingDiffers) {
    open(SettingsSection::commands);
    selectBuiltIn(0);
    auto* restore = named<QPushButton>(SettingsTexts::restoreDefaultArea);
    EXPECT_FALSE(restore->isEnabled());
    auto* grid = all<GridEditorView>().at(0);
    press(*grid, Qt::Key_Right);
    EXPECT_TRUE(restore->isEnabled());
    restore->setFocus();
    restore->click();
    EXPECT_FALSE(restore->isEnabled());
    EXPECT_TRUE(grid->hasFocus()) << "the button cannot keep the keyboard";
}

TEST_F(SettingsControls, theGridBeginsWhereItsTitleDoes) {
    open(SettingsSection::commands);
    EXPECT_FALSE(shows(SettingsTexts::arrowKeys));
    for (const SnapCommand& area :
         {stage.model().areas(false).front(), stage.model().areas(false).back()}) {
        stage.model().select(area.id);
        QApplication::processEvents();
        const GridEditorView& grid = *all<GridEditorView>().at(0);
        const auto layout = GridEditorLayout::of(
            {static_cast<double>(grid.width()), static_cast<double>(grid.height())}, area.axis);
        EXPECT_GE(layout.pitch, 8);
        const double left = grid.mapTo(&stage.window(), QPoint()).x() + layout.origin.x;
        const auto labels = stage.window().findChildren<QLabel*>();
        const auto named = std::find_if(labels.begin(), labels.end(), [&](const QLabel* label) {
            return label->isVisible() && label->text().toStdString() == listedName(area);
        });
        ASSERT_NE(named, labels.end());
        EXPECT_EQ(left, (*named)->mapTo(&stage.window(), QPoint()).x());
        EXPECT_TRUE(shows(SettingsTexts::arrowKeys));
    }
}

TEST_F(SettingsControls, emptyCellsCanBeSeen) {
    open(SettingsSection::commands);
    selectBuiltIn(0);
    auto* grid = all<GridEditorView>().at(0);
    const QImage picture = stage.window().grab().toImage();
    const QPoint corner = grid->mapTo(&stage.window(), QPoint());
    const QPoint cell = corner + middleOf(*grid, {20, 6}, Axis::horizontal).toPoint();
    EXPECT_GE(contrast(picture.pixelColor(cell), WidgetColors::window()), 2);
}

TEST_F(SettingsControls, arrowKeysMoveAndResizeTheArea) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    commandChanges = 0;
    auto* grid = all<GridEditorView>().at(0);
    press(*grid, Qt::Key_Left);
    press(*grid, Qt::Key_Down);
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{5, 4, 12, 6}}));
    press(*grid, Qt::Key_Right, Qt::ShiftModifier);
    press(*grid, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{5, 4, 13, 5}}));
    EXPECT_EQ(commandChanges, 4);
    for (int i = 0; i < 30; ++i) {
        press(*grid, Qt::Key_Left);
    }
    EXPECT_EQ(selected().targetSegments, (std::vector<Segment>{{0, 4, 13, 5}}));
    EXPECT_EQ(commandChanges, 9) << "at the edge there is nothing to edit";
}

TEST_F(SettingsControls, aNameThatIsBeingTypedIsTakenOverWhenTheWindowCloses) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    auto* name = named<QLineEdit>(SettingsTexts::name);
    name->setFocus();
    name->selectAll();
    QKeyEvent letter(QEvent::KeyPress, 0, {}, QStringLiteral("M"));
    QApplication::sendEvent(name, &letter);
    stage.window().close();
    EXPECT_EQ(selected().displayName(), "M");
}

TEST_F(SettingsControls, textFieldsHaveTheUsualKeys) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    auto* name = named<QLineEdit>(SettingsTexts::name);
    name->setFocus();
    press(*name, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(name->selectedText().toStdString(), "Custom Area");
    press(*name, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "Custom Area");
    press(*name, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(name->text().toStdString(), "");
    press(*name, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(name->text().toStdString(), "Custom Area");
    press(*name, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(name->text().toStdString(), "");
    press(*name, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(name->text().toStdString(), "Custom Area");
}

TEST_F(SettingsControls, aGridWithoutRoomDrawsNothing) {
    GridEditorView grid;
    grid.setCommand(stage.model().commands()[0]);
    grid.setMinimumSize(1, 1);
    grid.resize(23, 100);
    QImage picture(grid.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    grid.render(&picture, {}, {}, QWidget::RenderFlags());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ASSERT_EQ(picture.pixel(x, y), 0U) << x << ", " << y;
        }
    }
}

TEST_F(SettingsControls, theCaptionStandsRightBelowTheGrid) {
    open(SettingsSection::commands);
    stage.model().select(stage.model().commands()[0].id);
    QApplication::processEvents();
    const GridEditorView& grid = *all<GridEditorView>().at(0);
    for (const QLabel* label : stage.window().findChildren<QLabel*>()) {
        if (label->text() ==
            QString::fromUtf8("Drag across the grid to choose where this snaps.")) {
            const Rect last = GridEditorLayout::of({static_cast<double>(grid.width()),
                                                    static_cast<double>(grid.height())},
                                                   Axis::horizontal)
                                  .cell({23, 11});
            const int below = label->mapTo(&stage.window(), QPoint()).y() -
                              grid.mapTo(&stage.window(), QPoint()).y();
            EXPECT_LT(below - last.maxY(), 24);
            return;
        }
    }
    FAIL() << "there is no caption";
}

}  // namespace
}  // namespace lumatile
