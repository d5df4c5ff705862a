// The onboarding window, worked as a user works it.

#include <QAccessible>
#include <QApplication>
#include <QDialog>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Lumatile/OnboardingCoordinator.h"
#include "Lumatile/onboarding/BoldText.h"
#include "Lumatile/onboarding/OnboardingWindowController.h"
#include "Lumatile/widgets/SymbolIcon.h"
#include "onboarding/OnboardingTexts.h"
#include "onboarding/TipTexts.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/unit/Lumatile/WindowStage.h"

namespace lumatile {
namespace {

/// Hands out the window that it made.
class Presenter final : public OnboardingPresenter {
public:
    explicit Presenter(OnboardingWindowController::Services services)
        : maker_(std::move(services)) {}

    std::unique_ptr<OnboardingPresenting> make(std::shared_ptr<OnboardingModel> model,
                                               std::function<void()> closed) override {
        auto made = maker_.make(std::move(model), std::move(closed));
        controller = dynamic_cast<OnboardingWindowController*>(made.get());
        return made;
    }

    OnboardingWindowController* controller = nullptr;

private:
    OnboardingWindowMaker maker_;
};

class OnboardingWindow : public testing::Test {
protected:
    void open(double patience = 0, const SystemTiling& tiling = {}) {
        desk.accessibility.setTrusted(false);
        desk.workspace.opensAddresses = false;
        desk.accessibility.obstacle = TrustObstacle::noWindowManager;
        model = std::make_shared<OnboardingModel>(
            AccessibilityGrantFlow(desk.accessibility), tiling,
            OnboardingModel::Surroundings{
                [this](double seconds, std::function<void()> tick) {
                    return std::shared_ptr<void>(desk.runLoop.repeat(seconds, std::move(tick)));
                },
                [this] { return desk.runLoop.now(); },
                [this](std::string_view address) { return desk.workspace.open(address); }});
        presenter = std::make_unique<Presenter>(
            OnboardingWindowController::Services{desk.runLoop, stage.saying(), patience});
        coordinator =
            std::make_shared<OnboardingCoordinator>(model, *presenter, [this] { ++completions; });
        coordinator->show();
        QApplication::processEvents();
    }

    QDialog& window() { return *presenter->controller->window(); }
    bool shows(std::string_view text) { return WindowStage::shows(window(), text); }

    void grant() {
        desk.accessibility.setTrusted(true);
        desk.advance(OnboardingModel::pollInterval);
        QApplication::processEvents();
    }

    /// Until the window waits and says what is missing.
    void refuse() {
        WindowStage::button(window(), "Open System Settings…")->click();
        desk.advance(2);
        QApplication::processEvents();
    }

    WindowStage stage;
    SimulatedDesktop desk;
    std::shared_ptr<OnboardingModel> model;
    std::unique_ptr<Presenter> presenter;
    std::shared_ptr<OnboardingCoordinator> coordinator;
    int completions = 0;
};

TEST_F(OnboardingWindow, hasItsTitleAndSize) {
    open();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().windowTitle().toStdString(), "Lumatile Setup");
    EXPECT_EQ(window().size(), QSize(560, 480));
}

TEST_F(OnboardingWindow, welcomesAndAsksForThePermission) {
    open();
    EXPECT_EQ(WindowStage::texts(window()),
              (std::vector<std::string>{
                  std::string(OnboardingTexts::welcome), std::string(OnboardingTexts::explanation),
                  std::string(OnboardingTexts::missing(TrustObstacle::noWindowManager))}))
        << "what is missing is known at once";
    ASSERT_EQ(WindowStage::buttons(window()).size(), 1U);
    auto* request = WindowStage::button(window(), "Open System Settings…");
    ASSERT_NE(request, nullptr);
    EXPECT_TRUE(request->isDefault());
    WindowStage::press(window(), Qt::Key_Return);
    EXPECT_TRUE(model->didRequest());
    EXPECT_EQ(desk.accessibility.promptsShown(), 1U);
}

TEST_F(OnboardingWindow, waitsAndSaysWhatIsMissing) {
    open();
    refuse();
    EXPECT_EQ(WindowStage::texts(window()),
              (std::vector<std::string>{
                  std::string(OnboardingTexts::welcome), std::string(OnboardingTexts::explanation),
                  std::string(OnboardingTexts::waiting),
                  std::string(OnboardingTexts::missing(TrustObstacle::noWindowManager))}));
    ASSERT_EQ(WindowStage::buttons(window()).size(), 1U);
    auto* again = WindowStage::button(window(), "Open System Settings again");
    ASSERT_NE(again, nullptr);
    again->click();
    EXPECT_EQ(desk.workspace.addresses.size(), 2U);
    EXPECT_EQ(desk.accessibility.promptsShown(), 1U);
    desk.accessibility.obstacle = TrustObstacle::windowManagerRefuses;
    desk.advance(1);
    EXPECT_TRUE(shows(OnboardingTexts::missing(TrustObstacle::windowManagerRefuses)));
}

TEST_F(OnboardingWindow, whereTheSettingsOpenNothingIsMissing) {
    open();
    desk.workspace.opensAddresses = true;
    refuse();
    EXPECT_TRUE(shows(OnboardingTexts::waiting));
    EXPECT_EQ(WindowStage::texts(window()).size(), 3U);
}

TEST_F(OnboardingWindow, onceGrantedItTellsWhatToDoAndReturnEndsIt) {
    open();
    grant();
    EXPECT_EQ(WindowStage::texts(window()),
              (std::vector<std::string>{
                  "You're all set",
                  "Press <b>⌃⌥ ← → ↑ ↓</b> to snap the front window to a half. Every shortcut is "
                  "in the menu-bar menu.",
                  "Drag a window to a screen edge or corner and let go to snap it."}));
    ASSERT_EQ(WindowStage::buttons(window()).size(), 1U);
    ASSERT_NE(WindowStage::button(window(), "Done"), nullptr);
    EXPECT_TRUE(WindowStage::button(window(), "Done")->isDefault());
    WindowStage::press(window(), Qt::Key_Return);
    EXPECT_EQ(completions, 0) << "not while the button is being pressed";
    desk.runLoop.settle();
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(coordinator->hasWindow());
}

TEST_F(OnboardingWindow, whereItsKeysAreTakenItNamesOneThatWorks) {
    stage.vocabulary = Vocabulary::of({DesktopKind::xfce, true});
    open();
    grant();
    EXPECT_EQ(WindowStage::texts(window()).size(), 3U);
    // A name that is the user's stays as it is, whatever it looks like.
    model->setAdvice(OnboardingModel::Advice{"⌃⌥U", "**My** Mac ⌃⌥ <b>%1</b>"});
    EXPECT_TRUE(
        shows("Another program on this desktop has some of these keys. "
              "<b>Ctrl+Alt+U</b> works: it snaps to “**My** Mac ⌃⌥ &lt;b&gt;%1&lt;/b&gt;”."));
    WindowStage::expectNothingIsClipped(window());
    WindowStage::save(window(), "onboarding-taken");
    model->setAdvice(OnboardingModel::Advice{});
    EXPECT_TRUE(shows(OnboardingTexts::everythingTaken));
}

TEST_F(OnboardingWindow, theDesktopsOwnTilingIsToldOnTheLastPage) {
    open(0, {true, true});
    EXPECT_FALSE(shows(TipTexts::tilingIsOn.title));
    grant();
    EXPECT_TRUE(shows(TipTexts::tilingIsOn.title));
    EXPECT_TRUE(shows(TipTexts::tilingIsOn.text));
    WindowStage::expectNothingIsClipped(window());
}

TEST_F(OnboardingWindow, closingItEndsThePoll) {
    open();
    window().close();
    desk.runLoop.settle();
    EXPECT_FALSE(coordinator->hasWindow());
    EXPECT_FALSE(model->isPolling());
    EXPECT_EQ(completions, 0);
}

TEST_F(OnboardingWindow, escapeClosesTheLastPageAsDoneDoes) {
    open();
    grant();
    WindowStage::press(window(), Qt::Key_Escape);
    desk.runLoop.settle();
    EXPECT_EQ(completions, 1);
}

TEST_F(OnboardingWindow, aModelThatOutlivesTheWindowReachesNobody) {
    open();
    coordinator.reset();
    model->start();
    grant();
    EXPECT_EQ(model->state(), GrantState::granted);
}

TEST_F(OnboardingWindow, keepsBackForAMoment) {
    open(3);
    EXPECT_EQ(presenter->controller->window(), nullptr);
    EXPECT_TRUE(model->isPolling());
    desk.advance(2.9);
    EXPECT_EQ(presenter->controller->window(), nullptr);
    desk.advance(0.2);
    ASSERT_NE(presenter->controller->window(), nullptr);
    EXPECT_TRUE(window().isVisible());
    grant();
    EXPECT_TRUE(shows(OnboardingTexts::ready));
    EXPECT_EQ(completions, 0);
}

TEST_F(OnboardingWindow, aGrantInThatMomentCompletesUnseen) {
    open(3);
    desk.advance(1);
    grant();
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(coordinator->hasWindow());
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    desk.advance(10);
    EXPECT_EQ(completions, 1);
}

TEST_F(OnboardingWindow, aGrantThatIsThereByThenCompletesUnseenAtOnce) {
    open(3);
    coordinator.reset();
    desk.accessibility.setTrusted(true);
    Presenter later({desk.runLoop, stage.saying(), 3});
    coordinator = std::make_shared<OnboardingCoordinator>(model, later, [this] { ++completions; });
    coordinator->show();
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(coordinator->hasWindow());
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    coordinator.reset();
}

TEST_F(OnboardingWindow, askedForByTheUserItDoesNotKeepBack) {
    open(3);
    coordinator->show();
    ASSERT_NE(presenter->controller->window(), nullptr);
    EXPECT_TRUE(window().isVisible());
    window().close();
    desk.runLoop.settle();
    coordinator->show();
    ASSERT_NE(presenter->controller->window(), nullptr);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(desk.runLoop.timerCount(), 1U) << "the poll alone";
}

TEST_F(OnboardingWindow, everyTextAndButtonHasANameForScreenReaders) {
    open(0, {true, true});
    grant();
    std::vector<std::string> names;
    for (QLabel* label : window().findChildren<QLabel*>()) {
        const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(label);
        ASSERT_NE(seen, nullptr);
        if (label->isVisible() && !label->text().isEmpty()) {
            EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty());
            names.push_back(seen->text(QAccessible::Name).toStdString());
        }
    }
    EXPECT_EQ(
        std::count(names.begin(), names.end(),
                   "Press ⌃⌥ ← → ↑ ↓ to snap the front window to a half. Every shortcut is in "
                   "the menu-bar menu."),
        1)
        << "without the marks of bold text";
    EXPECT_EQ(window().focusWidget(), WindowStage::button(window(), "Done"));
}

TEST_F(OnboardingWindow, everySymbolHasADrawing) {
    EXPECT_TRUE(SymbolIcon::isKnown(OnboardingTexts::readySymbol));
    for (const auto& hint : OnboardingTexts::hints) {
        EXPECT_TRUE(SymbolIcon::isKnown(hint.symbol)) << hint.symbol;
    }
}

TEST_F(OnboardingWindow, theHostsNounsTakeTheirPlaces) {
    stage.vocabulary = Vocabulary::of({DesktopKind::xfce, true});
    open();
    EXPECT_NE(WindowStage::button(window(), "Open Settings Manager…"), nullptr);
}

TEST_F(OnboardingWindow, isDrawnWholeInEachState) {
    open(0, {true, true});
    WindowStage::expectNothingIsClipped(window());
    WindowStage::save(window(), "onboarding-requesting");
    refuse();
    WindowStage::expectNothingIsClipped(window());
    WindowStage::save(window(), "onboarding-waiting");
    grant();
    WindowStage::expectNothingIsClipped(window());
    WindowStage::save(window(), "onboarding-granted");
}

TEST_F(OnboardingWindow, largeTextGetsMoreRoom) {
    const DesktopFont large(1.5);
    open(0, {true, true});
    EXPECT_GT(window().width(), 560);
    WindowStage::expectNothingIsClipped(window());
    refuse();
    WindowStage::expectNothingIsClipped(window());
    WindowStage::save(window(), "onboarding-waiting-large-text");
    grant();
    WindowStage::expectNothingIsClipped(window());
    WindowStage::save(window(), "onboarding-granted-large-text");
}

TEST_F(OnboardingWindow, onASmallScreenTheTextsScrollAndTheButtonsStay) {
    open(0, {true, true});
    window().resize(420, 260);
    WindowStage::expectNothingIsClipped(window());
    grant();
    WindowStage::expectNothingIsClipped(window());
    EXPECT_TRUE(WindowStage::button(window(), "Done")->isVisible());
}

TEST(BoldText, marksTheBoldPartsAndEscapesTheRest) {
    const BoldText text = BoldText::of(QStringLiteral("a < b **c & d** e"));
    EXPECT_EQ(text.rich.toStdString(), "a &lt; b <b>c &amp; d</b> e");
    EXPECT_EQ(text.plain.toStdString(), "a < b c & d e");
    EXPECT_EQ(BoldText::of(QStringLiteral("plain")).rich.toStdString(), "plain");
    EXPECT_EQ(BoldText::of(QStringLiteral("a **b")).rich.toStdString(), "a <b>b</b>");
}

}  // namespace
}  // namespace lumatile
