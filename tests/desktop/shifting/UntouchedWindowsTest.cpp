// Windows that the shift leaves alone, and one that it moves although nobody sees it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdlib.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

#include "tests/desktop/support/shifting/ShiftingDesk.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {
namespace {

using testing::IsEmpty;

const PixelRect opened{400, 300, 640, 480};
const PixelRect elsewhere{1100, 200, 400, 300};

/// A ring and a half in which an ordinary window moves, and `window` is not even asked to.
void expectUntouched(ShiftingDesk& desk, ShiftedWindow& window) {
    const auto ordinary = desk.open(elsewhere);
    desk.settle();
    const PixelRect frame = window.frame();
    const std::string condition = window.condition();
    const std::string deskCondition = desk.condition();
    desk.forget();
    for (std::size_t taken = 0; taken < 24; ++taken) {
        desk.step();
        const Offset& offset = ShiftingDesk::ring[taken % ShiftingDesk::ring.size()];
        ASSERT_EQ(ordinary->frame(), shifted(elsewhere, offset));
        ASSERT_EQ(window.frame(), frame);
    }
    desk.conductor().stopFeatures();
    EXPECT_EQ(window.frame(), frame);
    EXPECT_EQ(window.condition(), condition);
    EXPECT_EQ(desk.condition(), deskCondition);
    EXPECT_EQ(window.timesAsked(), 0U);
    EXPECT_THAT(window.otherThanMoves(), IsEmpty());
}

struct StillCase {
    ShiftingKind session;
    StillWindow window;
    const char* name;
};

std::ostream& operator<<(std::ostream& stream, const StillCase& each) {
    return stream << each.session << ", " << each.name;
}

class UntouchedWindows : public testing::TestWithParam<StillCase> {};

TEST_P(UntouchedWindows, areNotEvenAsked) {
    const auto desk = GetParam().session.start({});
    const auto window = desk->openStill(GetParam().window, opened);
    expectUntouched(*desk, *window);
}

std::vector<StillCase> stillCases() {
    constexpr std::array<std::pair<StillWindow, const char*>, 10> windows{
        {{StillWindow::maximized, "maximized"},
         {StillWindow::maximizedVertically, "maximizedVertically"},
         {StillWindow::maximizedHorizontally, "maximizedHorizontally"},
         {StillWindow::fullScreen, "fullScreen"},
         {StillWindow::minimized, "minimized"},
         {StillWindow::shaded, "shaded"},
         {StillWindow::panel, "panel"},
         {StillWindow::icons, "icons"},
         {StillWindow::dialog, "dialog"},
         {StillWindow::unmanaged, "unmanaged"}}};
    std::vector<StillCase> cases;
    for (const ShiftingKind& session : shiftingKinds()) {
        for (const auto& [window, name] : windows) {
            cases.push_back({session, window, name});
        }
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Shifting, UntouchedWindows, testing::ValuesIn(stillCases()),
                         [](const testing::TestParamInfo<StillCase>& each) {
                             return each.param.session.name + "_" + each.param.name;
                         });

/// The folder of the user's data, as long as this lives.
class UserData {
public:
    explicit UserData(const std::filesystem::path& folder) {
        if (const char* const before = std::getenv(name)) {
            before_ = before;
        }
        setenv(name, folder.c_str(), 1);
    }
    UserData(const UserData&) = delete;
    UserData& operator=(const UserData&) = delete;
    ~UserData() {
        if (before_) {
            setenv(name, before_->c_str(), 1);
        } else {
            unsetenv(name);
        }
    }

private:
    static constexpr const char* name = "XDG_DATA_HOME";
    std::optional<std::string> before_;
};

class BlacklistedWindows : public ShiftingTest {};

TEST_P(BlacklistedWindows, areNotEvenAskedWhileTheBlacklistNamesThem) {
    const auto desk = start();
    const PixelRect home{700, 600, 300, 280};
    const auto other = desk->openOther(home);
    desk->step();
    EXPECT_EQ(other->frame(), shifted(home, ShiftingDesk::ring[0]))
        << "what the blacklist takes out moves without it";
    desk->conductor().blacklist().addToUserList(ShiftingDesk::otherId);
    const PixelRect frame = other->frame();
    desk->forget();
    desk->step(3);
    EXPECT_EQ(other->frame(), frame);
    EXPECT_EQ(other->timesAsked(), 0U);
    EXPECT_THAT(other->otherThanMoves(), IsEmpty());
}

TEST_P(BlacklistedWindows, areNamedByTheirDesktopEntryInEverySession) {
    const TemporaryFolder data;
    data.write("applications/org.lumatile.test.Logo.desktop",
               "[Desktop Entry]\nType=Application\nName=Logo\nExec=xlogo\nStartupWMClass=XLogo\n");
    const UserData userData(data.path());
    const auto desk = start();
    const PixelRect home{700, 600, 300, 280};
    const auto other = desk->openOther(home);
    desk->conductor().blacklist().addToUserList(ShiftingDesk::otherId);
    desk->step();
    EXPECT_EQ(other->frame(), shifted(home, ShiftingDesk::ring[0])) << "it is not that any more";
    desk->conductor().blacklist().addToUserList("org.lumatile.test.Logo");
    const PixelRect frame = other->frame();
    desk->step(2);
    EXPECT_EQ(other->frame(), frame);
}

INSTANTIATE_TEST_SUITE_P(Shifting, BlacklistedWindows, testing::ValuesIn(shiftingKinds()),
                         ShiftingTest::nameOf);

class WindowsElsewhere : public ShiftingTest {};

TEST_P(WindowsElsewhere, moveOnTheirVirtualDesktopAndStayThere) {
    const auto desk = start();
    desk->addVirtualDesktop();
    const auto window = desk->open(opened);
    const auto visible = desk->open(elsewhere);
    window->sendToDesktop(1);
    visible->activate();
    desk->settle();
    const std::string condition = window->condition();
    const std::string deskCondition = desk->condition();
    desk->forget();
    for (const Offset& offset : ShiftingDesk::ring) {
        desk->step();
        ASSERT_EQ(window->frame(), shifted(opened, offset));
        ASSERT_EQ(visible->frame(), shifted(elsewhere, offset));
        ASSERT_EQ(window->condition(), condition);
        ASSERT_EQ(desk->condition(), deskCondition);
    }
    EXPECT_THAT(window->otherThanMoves(), IsEmpty());
    desk->conductor().stopFeatures();
    EXPECT_EQ(window->frame(), opened);
    EXPECT_EQ(window->condition(), condition);
}

INSTANTIATE_TEST_SUITE_P(Shifting, WindowsElsewhere, testing::ValuesIn(shiftingKinds()),
                         ShiftingTest::nameOf);

}  // namespace
}  // namespace lumatile::desktop
