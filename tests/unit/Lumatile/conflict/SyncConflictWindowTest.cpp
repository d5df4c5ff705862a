// The conflict window, worked as a user works it.

#include <QAccessible>
#include <QApplication>
#include <QDateTime>
#include <QDialog>
#include <QFrame>
#include <QLocale>

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <memory>
#include <optional>
#include <string>

#include "Lumatile/SyncConflictCoordinator.h"
#include "Lumatile/conflict/EditedTime.h"
#include "Lumatile/conflict/SyncConflictTexts.h"
#include "Lumatile/conflict/SyncConflictWindow.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/unit/Lumatile/WindowStage.h"

namespace lumatile {
namespace {

/// A time zone for as long as it lives.
class TimeZone {
public:
    explicit TimeZone(const char* name) {
        if (const char* present = std::getenv("TZ")) {
            before_ = present;
        }
        set(name);
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
    ~TimeZone() { set(before_ ? before_->c_str() : nullptr); }

private:
    static void set(const char* name) {
        if (name != nullptr) {
            setenv("TZ", name, 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

    std::optional<std::string> before_;
};

const QLocale american(QLocale::English, QLocale::UnitedStates);

std::string americanTime(double timestamp) { return editedTime(timestamp, american).toStdString(); }

TEST(EditedTime, isAMediumDateAndAShortTime) {
    const TimeZone zone("UTC");
    // 2026-11-21 16:57:32 UTC.
    constexpr double moment = 1795280252;
    EXPECT_EQ(americanTime(moment), "Nov 21, 2026, 4:57 PM");
    EXPECT_EQ(editedTime(moment, QLocale(QLocale::German, QLocale::Germany)).toStdString(),
              "21. Nov. 2026, 16:57");
    EXPECT_EQ(editedTime(moment, QLocale(QLocale::French, QLocale::France)).toStdString(),
              "21 nov. 2026, 16:57");
    EXPECT_EQ(editedTime(moment, QLocale(QLocale::English, QLocale::UnitedKingdom)).toStdString(),
              "21 Nov 2026, 16:57");
    EXPECT_EQ(editedTime(moment, QLocale(QLocale::Japanese, QLocale::Japan)).toStdString(),
              "2026年11月21日, 16:57");
    EXPECT_EQ(editedTime(moment, QLocale::c()).toStdString(), "21 Nov 2026, 16:57");
}

TEST(EditedTime, namesNoDayOfTheWeekInAnyLocale) {
    const TimeZone zone("UTC");
    constexpr double moment = 1795280252;
    for (const QLocale& locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const QString text = editedTime(moment, locale);
        EXPECT_FALSE(text.contains(locale.dayName(6, QLocale::LongFormat)))
            << locale.name().toStdString() << ": " << text.toStdString();
        EXPECT_FALSE(text.startsWith(u',') || text.startsWith(u' '))
            << locale.name().toStdString() << ": " << text.toStdString();
    }
}

TEST(EditedTime, hasNoSecondsInAnyLocale) {
    const TimeZone zone("UTC");
    // 16:57:32, of which the last two digits are in no date of that day.
    constexpr double moment = 1795280252;
    for (const QLocale& locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const QString text = editedTime(moment, locale);
        EXPECT_FALSE(text.contains(locale.toString(32)))
            << locale.name().toStdString() << ": " << text.toStdString();
        EXPECT_TRUE(text.contains(locale.toString(57)))
            << locale.name().toStdString() << ": " << text.toStdString();
    }
}

TEST(EditedTime, isInTheUsersTimeZone) {
    const TimeZone zone("America/New_York");
    EXPECT_EQ(americanTime(1795280252), "Nov 21, 2026, 11:57 AM");
}

TEST(EditedTime, neverIsTheFirstOfJanuary1970InTheUsersTimeZone) {
    {
        const TimeZone zone("Europe/Berlin");
        EXPECT_EQ(americanTime(0), "Jan 1, 1970, 1:00 AM");
    }
    const TimeZone zone("America/New_York");
    EXPECT_EQ(americanTime(0), "Dec 31, 1969, 7:00 PM") << "which is when it was there";
}

TEST(EditedTime, whatCannotBeADateIsNoTrouble) {
    const TimeZone zone("UTC");
    EXPECT_EQ(americanTime(std::numeric_limits<double>::quiet_NaN()), americanTime(0));
    EXPECT_EQ(americanTime(std::numeric_limits<double>::infinity()), americanTime(1e300));
    EXPECT_EQ(americanTime(1e300), "Dec 31, 9999, 12:00 AM");
    EXPECT_EQ(americanTime(-std::numeric_limits<double>::infinity()), americanTime(-1e300));
    EXPECT_NE(americanTime(-1e300).find("Jan 2, "), std::string::npos) << americanTime(-1e300);
}

/// Hands out the window that it made.
class Presenter final : public SyncConflictPresenter {
public:
    Presenter(RunLoop& runLoop, Saying say) : maker_(runLoop, std::move(say)) {}

    std::unique_ptr<SyncConflictPresenting> make(std::function<void(bool)> choose,
                                                 std::function<void()> closed) override {
        auto made = maker_.make(std::move(choose), std::move(closed));
        shown = dynamic_cast<SyncConflictWindow*>(made.get());
        return made;
    }

    SyncConflictWindow* shown = nullptr;

private:
    SyncConflictWindowMaker maker_;
};

class SyncConflictWindowTest : public testing::Test {
protected:
    void present(double local, double remote, const ConflictDifferences& differences = {}) {
        if (!presenter) {
            presenter = std::make_unique<Presenter>(desk.runLoop, stage.saying());
            coordinator = std::make_unique<SyncConflictCoordinator>(*presenter);
        }
        coordinator->present(
            {local, remote}, [this](bool preferLocal) { choices.push_back(preferLocal); },
            differences);
        QApplication::processEvents();
    }

    QDialog& window() { return presenter->shown->window(); }

    /// The texts of the copy with that button.
    std::vector<std::string> copy(std::string_view name) {
        QWidget* button = WindowStage::button(window(), name);
        return button == nullptr ? std::vector<std::string>{"no such button"}
                                 : WindowStage::texts(*button->parentWidget());
    }

    static std::string edited(double timestamp) {
        return "Edited " + editedTime(timestamp, QLocale::system()).toStdString();
    }

    WindowStage stage;
    SimulatedDesktop desk;
    std::unique_ptr<Presenter> presenter;
    std::unique_ptr<SyncConflictCoordinator> coordinator;
    std::vector<bool> choices;
};

TEST_F(SyncConflictWindowTest, isWordForWordWithTheReferencesNouns) {
    present(1000, 2000);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().windowTitle().toStdString(), "iCloud Sync");
    EXPECT_EQ(window().size(), QSize(520, 280));
    EXPECT_TRUE(SymbolIcon::isKnown("arrow.triangle.2.circlepath.icloud"));
    EXPECT_EQ(SyncConflictTexts::symbol, "arrow.triangle.2.circlepath.icloud");
    EXPECT_TRUE(WindowStage::shows(window(), "Settings Conflict"));
    EXPECT_TRUE(WindowStage::shows(
        window(),
        "Your Lumatile settings changed on this Mac and in iCloud since they last synced. Choose "
        "which copy to keep."));
    EXPECT_EQ(copy("Keep This Mac"), (std::vector<std::string>{"This computer", edited(1000)}));
    EXPECT_EQ(copy("Use iCloud"),
              (std::vector<std::string>{"Shared folder", "Newer", edited(2000)}));
    EXPECT_EQ(WindowStage::buttons(window()).size(), 2U);
}

TEST_F(SyncConflictWindowTest, theHostsNounsTakeTheirPlaces) {
    stage.vocabulary = Vocabulary::of({DesktopKind::gnome, true});
    present(1000, 2000);
    EXPECT_EQ(window().windowTitle().toStdString(), "Shared Folder Sync");
    EXPECT_TRUE(WindowStage::shows(
        window(),
        "Your Lumatile settings changed on this computer and in the shared folder since they last "
        "synced. Choose which copy to keep."));
    EXPECT_NE(WindowStage::button(window(), "Keep This Computer"), nullptr);
    EXPECT_NE(WindowStage::button(window(), "Use Shared Folder"), nullptr);
}

TEST_F(SyncConflictWindowTest, theCopyChangedLaterIsTheNewerOne) {
    present(3000, 2000);
    EXPECT_EQ(copy("Keep This Mac"),
              (std::vector<std::string>{"This computer", "Newer", edited(3000)}));
    EXPECT_EQ(copy("Use iCloud"), (std::vector<std::string>{"Shared folder", edited(2000)}));
}

TEST_F(SyncConflictWindowTest, equalTimesCarryNoBadge) {
    present(2000, 2000);
    EXPECT_EQ(copy("Keep This Mac"), (std::vector<std::string>{"This computer", edited(2000)}));
    EXPECT_EQ(copy("Use iCloud"), (std::vector<std::string>{"Shared folder", edited(2000)}));
}

TEST_F(SyncConflictWindowTest, neverIsShownAsTheFirstOfJanuary1970) {
    const TimeZone zone("UTC");
    present(0, 2000);
    EXPECT_EQ(copy("Keep This Mac"), (std::vector<std::string>{"This computer", edited(0)}));
    EXPECT_NE(edited(0).find("1970"), std::string::npos);
}

TEST_F(SyncConflictWindowTest, eachButtonHandsOnItsChoice) {
    for (const bool preferLocal : {true, false}) {
        choices.clear();
        present(1000, 2000);
        QPushButton* button =
            WindowStage::button(window(), preferLocal ? "Keep This Mac" : "Use iCloud");
        ASSERT_NE(button, nullptr);
        button->click();
        button->click();
        desk.runLoop.settle();
        EXPECT_EQ(choices, std::vector<bool>{preferLocal});
        EXPECT_FALSE(coordinator->hasWindow());
    }
}

TEST_F(SyncConflictWindowTest, closingDecidesNothingAndItComesBack) {
    present(1000, 2000);
    WindowStage::press(window(), Qt::Key_Escape);
    desk.runLoop.settle();
    EXPECT_FALSE(coordinator->hasWindow());
    present(1000, 3000);
    EXPECT_TRUE(window().isVisible());
    window().close();
    desk.runLoop.settle();
    EXPECT_TRUE(choices.empty());
}

TEST_F(SyncConflictWindowTest, presentedAgainItIsTheSameWindowWithTheNewTimes) {
    present(1000, 2000);
    const QDialog* before = &window();
    present(4000, 2000);
    EXPECT_EQ(&window(), before);
    EXPECT_EQ(copy("Keep This Mac"),
              (std::vector<std::string>{"This computer", "Newer", edited(4000)}));
}

TEST_F(SyncConflictWindowTest, theKeyboardReachesBothButtonsAndScreenReadersHearTheirTimes) {
    present(1000, 2000);
    for (const auto& [name, described] :
         {std::pair<std::string, std::string>{"Keep This Mac", edited(1000)},
          {"Use iCloud", edited(2000) + ", Newer"}}) {
        QPushButton* button = WindowStage::button(window(), name);
        ASSERT_NE(button, nullptr) << name;
        EXPECT_NE(button->focusPolicy() & Qt::TabFocus, 0);
        const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(button);
        EXPECT_EQ(seen->text(QAccessible::Description).toStdString(), described);
    }
    WindowStage::button(window(), "Use iCloud")->setFocus();
    WindowStage::press(window(), Qt::Key_Return);
    desk.runLoop.settle();
    EXPECT_EQ(choices, std::vector<bool>{false});
}

TEST_F(SyncConflictWindowTest, aKeyThatWasMeantForAnotherWindowChoosesNothing) {
    present(1000, 2000);
    WindowStage::press(window(), Qt::Key_Return);
    WindowStage::press(window(), Qt::Key_Space);
    desk.runLoop.settle();
    EXPECT_TRUE(choices.empty());
    EXPECT_TRUE(coordinator->hasWindow());
    WindowStage::press(window(), Qt::Key_Tab);
    EXPECT_EQ(window().focusWidget(), WindowStage::button(window(), "Keep This Mac"));
    WindowStage::press(window(), Qt::Key_Space);
    desk.runLoop.settle();
    EXPECT_EQ(choices, std::vector<bool>{true});
}

const ConflictDifferences typical{"3 shortcuts, pixel shift off",
                                  "3 shortcuts, 1 area of its own, pixel shift on"};

TEST_F(SyncConflictWindowTest, saysWhatTheCopiesDifferInAndKeepsDatesOnOneLine) {
    present(1795280252, 1795283852, typical);
    EXPECT_EQ(copy("Keep This Mac"),
              (std::vector<std::string>{"This computer", edited(1795280252), typical.local}));
    EXPECT_EQ(copy("Use iCloud"), (std::vector<std::string>{"Shared folder", "Newer",
                                                            edited(1795283852), typical.remote}));
    const QAccessibleInterface* seen =
        QAccessible::queryAccessibleInterface(WindowStage::button(window(), "Use iCloud"));
    EXPECT_EQ(seen->text(QAccessible::Description).toStdString(),
              edited(1795283852) + ", Newer, " + typical.remote);
    for (const QLabel* label : window().findChildren<QLabel*>()) {
        if (label->text().startsWith(QStringLiteral("Edited "))) {
            EXPECT_FALSE(label->wordWrap());
            EXPECT_LT(label->height(), 2 * label->fontMetrics().height());
        }
    }
    EXPECT_EQ(window().size(), QSize(520, 280));
}

TEST_F(SyncConflictWindowTest, isDrawnWhole) {
    present(1795280252, 1795283852, typical);
    WindowStage::expectNothingIsClipped(window());
    WindowStage::save(window(), "conflict");
}

TEST_F(SyncConflictWindowTest, muchThatDiffersGetsMoreRoom) {
    const std::string much =
        "28 shortcuts, 31 areas, 30 names or menu entries, 12 areas of its own, 3 areas missing, "
        "pixel shift 2 px every 5 min in pauses, edge jitter 3 px, idle dimming 30 % after 5 min";
    present(1795280252, 1795283852, {much, much});
    EXPECT_GT(window().height(), 280);
    WindowStage::expectNothingIsClipped(window());
    WindowStage::save(window(), "conflict-much");
}

TEST_F(SyncConflictWindowTest, largeTextGetsMoreRoom) {
    const DesktopFont large(1.5);
    stage.vocabulary = Vocabulary::of({DesktopKind::gnome, true});
    present(1795283852, 1795280252, typical);
    EXPECT_GT(window().width(), 520);
    WindowStage::expectNothingIsClipped(window());
    WindowStage::save(window(), "conflict-large-text");
}

}  // namespace
}  // namespace lumatile
