// The group "Sync" of the general page, worked as a user works it.

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/settings/SyncCard.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "preference_sync/SyncTimestamp.h"

namespace lumatile {
namespace {

QString text(std::string_view words) {
    return QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size()));
}

class SyncCardTest : public testing::Test {
protected:
    SyncCardTest()
        : card(std::make_unique<SyncCard>(desk.sharedStore,
                                          [](std::string_view words) { return text(words); })) {
        card->show();
    }

    QComboBox& location() { return *card->findChild<QComboBox*>(); }
    QPushButton& replace() { return *card->findChild<QPushButton*>(); }

    std::vector<std::string> choices() {
        std::vector<std::string> all;
        for (int index = 0; index < location().count(); ++index) {
            all.push_back(location().itemText(index).toStdString());
        }
        return all;
    }

    /// As the user does, who opens the box and takes a choice.
    void choose(int index) {
        location().setCurrentIndex(index);
        emit location().activated(index);
    }

    bool says(std::string_view part) {
        const auto labels = card->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
            return label->isVisible() && label->text().contains(text(part));
        });
    }

    void pass() {
        constexpr int strides = 20;
        constexpr double stride = 0.05;
        for (int passed = 0; passed < strides; ++passed) {
            desk.advance(stride);
        }
    }

    SimulatedDesktop desk;
    std::unique_ptr<SyncCard> card;
};

TEST_F(SyncCardTest, atFirstNothingIsShared) {
    EXPECT_EQ(choices(), (std::vector<std::string>{"None", "Choose a Folder…"}));
    EXPECT_EQ(location().currentIndex(), 0);
    EXPECT_EQ(location().accessibleName(), text(SettingsTexts::shareThrough));
    EXPECT_TRUE(says("Settings stay on this computer."));
    EXPECT_FALSE(replace().isVisible());
}

TEST_F(SyncCardTest, aFolderOfTheHomeIsShownWithATilde) {
    desk.sharedStore.setLocation((QDir::homePath() + "/Sync").toStdString());
    pass();
    EXPECT_EQ(choices(), (std::vector<std::string>{"None", "~/Sync", "Choose a Folder…"}));
    EXPECT_EQ(location().currentIndex(), 1);
    EXPECT_EQ(location().toolTip(), QDir::homePath() + "/Sync");
    EXPECT_TRUE(says("Last synced "));
    EXPECT_TRUE(says(" with ~/Sync."));
}

TEST_F(SyncCardTest, aFolderBesideTheHomeIsShownAsItIs) {
    desk.sharedStore.setLocation((QDir::homePath() + "-other").toStdString());
    pass();
    EXPECT_EQ(location().currentText(), QDir::homePath() + "-other");
}

TEST_F(SyncCardTest, aFolderByTheNameOfANounStaysTheUsers) {
    card = std::make_unique<SyncCard>(desk.sharedStore, [](std::string_view words) {
        return text(words).replace(QLatin1String("Mac"), QLatin1String("computer"));
    });
    card->show();
    desk.sharedStore.setLocation("/home/a/Mac");
    pass();
    EXPECT_TRUE(says(" with /home/a/Mac."));
    EXPECT_EQ(choices().at(1), "/home/a/Mac");
}

TEST_F(SyncCardTest, choosingNoneEndsTheSharing) {
    desk.sharedStore.setLocation("/somewhere");
    pass();
    choose(0);
    EXPECT_EQ(desk.sharedStore.location(), std::nullopt);
    EXPECT_EQ(choices(), (std::vector<std::string>{"None", "Choose a Folder…"}));
    EXPECT_TRUE(says("Settings stay on this computer."));
}

TEST_F(SyncCardTest, aFolderIsChosenInADialogThatNobodyWaitsFor) {
    choose(1);
    EXPECT_EQ(location().currentIndex(), 0) << "nothing is chosen yet";
    auto* const dialog = card->window()->findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->fileMode(), QFileDialog::Directory);
    emit dialog->fileSelected("/chosen");
    EXPECT_EQ(desk.sharedStore.location(), "/chosen");
    EXPECT_EQ(location().currentText(), "/chosen");
    EXPECT_EQ(location().currentIndex(), 1);
}

TEST_F(SyncCardTest, aDialogThatIsCancelledChangesNothing) {
    desk.sharedStore.setLocation("/before");
    pass();
    choose(2);
    auto* const dialog = card->window()->findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    dialog->reject();
    EXPECT_EQ(desk.sharedStore.location(), "/before");
    EXPECT_EQ(location().currentText(), QStringLiteral("/before"));
}

TEST_F(SyncCardTest, whatFailsIsSaidInPlainWords) {
    desk.sharedStore.setLocation("/folder");
    pass();
    desk.sharedStore.setFull(true);
    desk.sharedStore.set("value", "commands");
    pass();
    EXPECT_TRUE(says("The last change could not be written there and will be tried again"));
    EXPECT_FALSE(replace().isVisible());
    desk.sharedStore.setFull(false);
    pass();
    EXPECT_FALSE(says("could not be written"));
}

TEST_F(SyncCardTest, aDamagedFileCanBeReplacedByTheUserAlone) {
    desk.sharedFolder.put({{"commands", "other"}, {"__ts", SyncTimestamp::encode(1)}}, "/folder");
    desk.sharedStore.setLocation("/folder");
    pass();
    desk.sharedStore.setDamaged(true);
    pass();
    EXPECT_TRUE(says("The settings file there is damaged or incomplete."));
    ASSERT_TRUE(replace().isVisible());
    EXPECT_EQ(replace().text(), text(SettingsTexts::replaceShared));
    replace().click();
    pass();
    EXPECT_TRUE(desk.sharedFolder.present("/folder").empty());
    EXPECT_FALSE(replace().isVisible());
}

TEST_F(SyncCardTest, whatWasKeptAndAWrongClockAreSaid) {
    desk.sharedStore.setLocation((QDir::homePath() + QStringLiteral("/Shared")).toStdString());
    desk.sharedStore.keep({{"commands", "older"}});
    constexpr double anHour = 3600;
    desk.sharedFolder.put({{"__ts", SyncTimestamp::encode(desk.clock.wallSeconds() + anHour)}},
                          *desk.sharedStore.location());
    pass();
    EXPECT_TRUE(says("An older change from this computer was kept in ~/Shared/copies."));
    EXPECT_TRUE(says("A computer’s clock is 59 min 59 s ahead of this one’s."));
}

TEST_F(SyncCardTest, timesHaveNoSeconds) {
    desk.sharedStore.setLocation("/folder");
    pass();
    const auto labels = card->findChildren<QLabel*>();
    const auto synced = std::find_if(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->text().startsWith(QStringLiteral("Last synced "));
    });
    ASSERT_NE(synced, labels.end());
    EXPECT_EQ((*synced)->text().count(QLatin1Char(':')), 1) << (*synced)->text().toStdString();
}

TEST_F(SyncCardTest, aCardThatIsGoneIsNotTold) {
    card.reset();
    desk.sharedStore.setLocation("/folder");
    pass();
    EXPECT_EQ(desk.sharedStore.location(), "/folder");
}

}  // namespace
}  // namespace lumatile
