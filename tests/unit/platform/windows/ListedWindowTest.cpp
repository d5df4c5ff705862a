#include "platform/windows/ListedWindow.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

ListedWindow ordinary(std::optional<Pid> owner, std::optional<std::string> application = {}) {
    ListedWindow window;
    window.owner = owner;
    window.application = std::move(application);
    window.isOrdinary = true;
    return window;
}

TEST(ListedWindow, applicationsAreListedOnceInTheOrderOfTheirFirstWindows) {
    const auto applications = applicationsOf({ordinary(3), ordinary(5), ordinary(3), ordinary(4)});
    ASSERT_EQ(applications.size(), 3U);
    EXPECT_EQ(applications[0].pid, 3);
    EXPECT_EQ(applications[1].pid, 5);
    EXPECT_EQ(applications[2].pid, 4);
}

TEST(ListedWindow, aWindowWhoseOwnerIsNotKnownBelongsToNone) {
    EXPECT_TRUE(applicationsOf({ordinary(std::nullopt, "editor")}).empty());
    EXPECT_FALSE(applicationOf({ordinary(std::nullopt, "editor")}, std::nullopt));
}

TEST(ListedWindow, theFirstIdThatIsKnownIsTheApplications) {
    const auto application =
        applicationOf({ordinary(3), ordinary(3, "editor"), ordinary(3, "tool")}, 3);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->applicationId, "editor");
}

TEST(ListedWindow, oneOrdinaryWindowMakesAnApplicationRegularAndOneShownNotHidden) {
    ListedWindow panel;
    panel.owner = 3;
    ListedWindow hidden = ordinary(3);
    hidden.isHidden = true;
    EXPECT_FALSE(applicationOf({panel}, 3)->isRegular);
    EXPECT_TRUE(applicationOf({panel, hidden}, 3)->isRegular);
    EXPECT_TRUE(applicationOf({hidden}, 3)->isHidden);
    EXPECT_FALSE(applicationOf({hidden, panel}, 3)->isHidden);
}

TEST(ListedWindow, theFrontmostOtherIsTheFirstThatCanBeSeen) {
    ListedWindow minimized = ordinary(4);
    minimized.isHidden = true;
    ListedWindow elsewhere = ordinary(5);
    elsewhere.isElsewhere = true;
    ListedWindow dialog = ordinary(6);
    dialog.isOrdinary = false;
    const Pid own = 3;
    const auto front = frontmostOther({ordinary(own), minimized, elsewhere, dialog,
                                       ordinary(std::nullopt), ordinary(7), ordinary(8)},
                                      own);
    ASSERT_TRUE(front);
    EXPECT_EQ(front->pid, 7);
    EXPECT_FALSE(frontmostOther({ordinary(own), minimized}, own));
}

}  // namespace
}  // namespace lumatile
