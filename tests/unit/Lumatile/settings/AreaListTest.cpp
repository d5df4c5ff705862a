// The sidebar and the list of areas: what is chosen, how that shows, and how it is reached.

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QListWidget>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/LinkLabel.h"
#include "Lumatile/widgets/RowList.h"
#include "Lumatile/widgets/WidgetColors.h"
#include "tests/support/Contrast.h"
#include "tests/unit/Lumatile/settings/SettingsControls.h"

namespace lumatile {
namespace {

QListWidgetItem& itemOf(QListWidget& list, const char* text) {
    const auto found = list.findItems(QString::fromUtf8(text), Qt::MatchExactly);
    if (found.isEmpty()) {
        throw std::out_of_range(text);
    }
    return *found.front();
}

/// How many pixels of the row stand out from `ground`.
int contrasting(QListWidget& list, const QListWidgetItem& item, const QRect& part,
                const QColor& ground) {
    const QImage picture = list.viewport()->grab().toImage();
    const QRect row = list.visualItemRect(&item);
    int count = 0;
    for (int y = row.top(); y <= row.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            count += contrast(picture.pixelColor(x, y), ground) >= 3 ? 1 : 0;
        }
    }
    return count;
}

/// The left end of a row, before its picture.
int leftEnd(QListWidget& list, const QListWidgetItem& item, const QColor& ground, int margin) {
    return contrasting(list, item, QRect(margin, 0, 5, 1), ground);
}

TEST_F(SettingsControls, areasAreListedInTheirGroups) {
    open(SettingsSection::commands);
    EXPECT_TRUE(shows(SettingsTexts::builtIn));
    EXPECT_TRUE(shows(SettingsTexts::yourAreas));
    EXPECT_EQ(group(false).item(0)->text().toStdString(), "Left Half");
    EXPECT_NO_THROW(itemOf(group(false), "Top Half (Portrait)"));
    ASSERT_EQ(group(true).count(), 1);
    EXPECT_EQ(group(true).item(0)->text().toStdString(), SettingsTexts::noAreas);
    EXPECT_TRUE(shows(SettingsTexts::selectAnArea));
}

TEST_F(SettingsControls, theUsersOwnAreasAreInViewWhereverTheBuiltInOnesAreScrolled) {
    stage.window().resize(stage.window().minimumSize());
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    stage.model().addCustomArea();
    QApplication::processEvents();
    stage.model().select(stage.model().areas(false).back().id);
    QApplication::processEvents();
    QListWidget& own = group(true);
    for (int row = 0; row < own.count(); ++row) {
        EXPECT_TRUE(own.viewport()->rect().contains(own.visualItemRect(own.item(row)))) << row;
    }
    EXPECT_TRUE(
        stage.window().rect().contains(QRect(own.mapTo(&stage.window(), QPoint()), own.size())));
    const QRect chosen = group(false).visualItemRect(group(false).currentItem());
    EXPECT_TRUE(group(false).viewport()->rect().contains(chosen));
}

TEST_F(SettingsControls, arrowKeysGoThroughBothGroupsOfTheList) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    const std::vector<SnapCommand> builtIn = stage.model().areas(false);
    stage.model().select(builtIn.back().id);
    group(false).setFocus();
    press(group(false), Qt::Key_Down);
    EXPECT_TRUE(selected().isCustom());
    EXPECT_TRUE(group(true).hasFocus());
    EXPECT_TRUE(group(false).selectedItems().isEmpty());
    press(group(true), Qt::Key_Down);
    EXPECT_TRUE(selected().isCustom());
    press(group(true), Qt::Key_Up);
    EXPECT_EQ(selected().id, builtIn.back().id);
    EXPECT_TRUE(group(false).hasFocus());
    press(group(false), Qt::Key_Home);
    EXPECT_EQ(selected().id, builtIn.front().id);
    press(group(false), Qt::Key_Up);
    EXPECT_EQ(selected().id, builtIn.front().id);
    press(group(false), Qt::Key_End);
    EXPECT_EQ(selected().id, builtIn.back().id);
}

TEST_F(SettingsControls, goingThroughTheWindowByTabChoosesNothing) {
    open(SettingsSection::commands);
    stage.model().addCustomArea();
    selectBuiltIn(3);
    const UUID id = selected().id;
    group(true).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(selected().id, id);
    EXPECT_TRUE(group(true).selectedItems().isEmpty());
}

TEST_F(SettingsControls, portraitAreasAreFoldedAwayAndBack) {
    open(SettingsSection::commands);
    QListWidget& list = group(false);
    QListWidgetItem& fold = itemOf(list, "Portrait");
    QListWidgetItem& portrait = itemOf(list, "Left Half (Portrait)");
    EXPECT_FALSE(portrait.isHidden()) << "open at first";
    list.scrollToItem(&fold);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(&fold).center());
    EXPECT_TRUE(portrait.isHidden());
    EXPECT_FALSE(itemOf(list, "Left Half").isHidden());
    EXPECT_EQ(stage.model().selected(), nullptr) << "it is no area";

    list.setCurrentItem(&fold, QItemSelectionModel::NoUpdate);
    list.setFocus();
    press(list, Qt::Key_Right);
    EXPECT_FALSE(portrait.isHidden());
    press(list, Qt::Key_Left);
    EXPECT_TRUE(portrait.isHidden());
    press(list, Qt::Key_Space);
    EXPECT_FALSE(portrait.isHidden());
    press(list, Qt::Key_Return);
    EXPECT_TRUE(portrait.isHidden());
    const auto* seen = QAccessible::queryAccessibleInterface(&list);
    EXPECT_EQ(seen->child(list.row(&fold))->text(QAccessible::Name).toStdString(),
              SettingsTexts::portraitHidden);

    stage.model().addCustomArea();
    EXPECT_TRUE(itemOf(list, "Left Half (Portrait)").isHidden()) << "as it was";
    stage.model().select(stage.model().areas(false).back().id);
    EXPECT_FALSE(itemOf(list, "Left Half (Portrait)").isHidden()) << "what is chosen shows";
}

TEST_F(SettingsControls, aClickBesideTheRowsChangesNothing) {
    open(SettingsSection::commands);
    auto* sidebar = named<QListWidget>(SettingsTexts::sidebar);
    const QPoint below(sidebar->viewport()->width() / 2, sidebar->viewport()->height() - 20);
    ASSERT_EQ(sidebar->itemAt(below), nullptr);
    for (const auto& modifiers :
         {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)}) {
        QTest::mouseClick(sidebar->viewport(), Qt::LeftButton, modifiers, below);
        EXPECT_EQ(stage.model().section(), SettingsSection::commands);
        ASSERT_EQ(sidebar->selectedItems().size(), 1);
        EXPECT_EQ(sidebar->row(sidebar->selectedItems().front()), 1);
        QTest::mouseClick(sidebar->viewport(), Qt::LeftButton, modifiers,
                          sidebar->visualItemRect(sidebar->item(1)).center());
        EXPECT_EQ(sidebar->selectedItems().size(), 1) << "nor does one on the chosen row";
    }
    selectBuiltIn(2);
    const UUID id = selected().id;
    // Where it says that there are none yet.
    QListWidget& own = group(true);
    QTest::mouseClick(own.viewport(), Qt::LeftButton, {}, own.visualItemRect(own.item(0)).center());
    QTest::mouseClick(group(false).viewport(), Qt::LeftButton, Qt::ControlModifier,
                      group(false).visualItemRect(group(false).currentItem()).center());
    EXPECT_EQ(selected().id, id);
    EXPECT_EQ(group(false).selectedItems().size(), 1);
}

TEST_F(SettingsControls, theChosenRowStandsOutAndTheOneUnderThePointerDoesNot) {
    open(SettingsSection::commands);
    selectBuiltIn(2);
    QListWidget& list = group(false);
    QTest::mouseMove(list.viewport(), list.visualItemRect(list.item(4)).center());
    EXPECT_GT(leftEnd(list, *list.item(2), WidgetColors::card(), 0), 20);
    EXPECT_EQ(leftEnd(list, *list.item(4), WidgetColors::card(), 0), 0);
    EXPECT_EQ(leftEnd(list, *list.item(5), WidgetColors::card(), 0), 0);
    auto* sidebar = named<QListWidget>(SettingsTexts::sidebar);
    EXPECT_GT(leftEnd(*sidebar, *sidebar->item(1), WidgetColors::sidebar(), 10), 20);
    EXPECT_EQ(leftEnd(*sidebar, *sidebar->item(2), WidgetColors::sidebar(), 10), 0);
}

TEST_F(SettingsControls, theRowThatTheKeyboardIsOnHasAFrame) {
    open(SettingsSection::commands);
    selectBuiltIn(2);
    stage.window().activateWindow();
    for (QListWidget* list : {&group(false), named<QListWidget>(SettingsTexts::sidebar)}) {
        const QListWidgetItem& row = *list->currentItem();
        const bool isSidebar = list != &group(false);
        const QColor ground = isSidebar ? WidgetColors::sidebar() : WidgetColors::card();
        // Away from text and picture.
        const int width = list->viewport()->width();
        const QRect end(width - 60, 0, 60, 1);
        stage.window().setFocus();
        const int without = contrasting(*list, row, end, ground);
        list->setFocus();
        EXPECT_GT(contrasting(*list, row, end, ground), without + 60);
    }
}

TEST_F(SettingsControls, refusedRowsAreMarkedAndTheSentenceLeadsToTheFirst) {
    open(SettingsSection::commands);
    const std::vector<SnapCommand>& commands = stage.model().commands();
    stage.model().setRefusedShortcuts({commands[4].id, commands[2].id});
    QListWidget& list = group(false);
    const auto isMarked = [&](const char* name) {
        return !itemOf(list, name).data(RowList::markRole).toString().isEmpty();
    };
    EXPECT_TRUE(isMarked("Top Half"));
    EXPECT_TRUE(isMarked("Top Half (Portrait)")) << "it has the same keys";
    EXPECT_TRUE(isMarked("Top Left"));
    EXPECT_FALSE(isMarked("Left Half"));
    EXPECT_EQ(itemOf(list, "Top Half").data(Qt::AccessibleDescriptionRole).toString().toStdString(),
              SettingsTexts::refusedHere);
    EXPECT_GT(contrasting(list, itemOf(list, "Top Half"),
                          QRect(list.viewport()->width() - 24, 0, 20, 1), WidgetColors::card()),
              20);
    auto* sentence = all<LinkLabel>().at(0);
    QTest::mouseClick(sentence, Qt::LeftButton);
    EXPECT_EQ(selected().displayName(), "Top Half");
    stage.model().select(std::nullopt);
    press(*sentence, Qt::Key_Return);
    EXPECT_EQ(selected().displayName(), "Top Half");
    const auto* seen = QAccessible::queryAccessibleInterface(sentence);
    EXPECT_EQ(seen->role(), QAccessible::Link);
    EXPECT_EQ(seen->text(QAccessible::Name), sentence->text());
    stage.model().setRefusedShortcuts({});
    EXPECT_FALSE(isMarked("Top Half"));
    EXPECT_FALSE(sentence->isVisible());
}

TEST_F(SettingsControls, theSentenceLeadsNowhereWhereNoAreaIsRefused) {
    open(SettingsSection::commands);
    // The shortcut of no area.
    stage.model().setRefusedShortcuts({stage.model().commands()[15].id});
    auto* sentence = all<LinkLabel>().at(0);
    EXPECT_TRUE(sentence->isVisible());
    EXPECT_EQ(sentence->toolTip().toStdString(), "Center");
    EXPECT_EQ(sentence->focusPolicy(), Qt::NoFocus);
    QTest::mouseClick(sentence, Qt::LeftButton);
    EXPECT_EQ(stage.model().selected(), nullptr);
}

}  // namespace
}  // namespace lumatile
