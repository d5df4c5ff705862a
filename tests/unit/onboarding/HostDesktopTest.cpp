#include "onboarding/HostDesktop.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace lumatile {
namespace {

struct Case {
    std::string sessionNames;
    std::string windowManager;
    HostDesktop expected;
};

std::ostream& operator<<(std::ostream& stream, const Case& value) {
    return stream << "session " << value.sessionNames << ", window manager " << value.windowManager;
}

class HostDesktopOf : public testing::TestWithParam<Case> {};

TEST_P(HostDesktopOf, isFound) {
    EXPECT_EQ(HostDesktop::find(GetParam().sessionNames, GetParam().windowManager),
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Sessions, HostDesktopOf,
    testing::Values(Case{"KDE", "KWin", {DesktopKind::plasma, true}},
                    Case{"GNOME", "GNOME Shell", {DesktopKind::gnome, true}},
                    Case{"ubuntu:GNOME", "GNOME Shell", {DesktopKind::gnome, true}},
                    Case{"GNOME-Classic:GNOME", "", {DesktopKind::gnome, true}},
                    Case{"GNOME-Flashback:GNOME", "Metacity", {DesktopKind::metacity, true}},
                    Case{"X-Cinnamon", "Mutter (Muffin)", {DesktopKind::cinnamon, true}},
                    Case{"MATE", "Marco", {DesktopKind::mate, true}},
                    Case{"XFCE", "Xfwm4", {DesktopKind::xfce, true}},
                    Case{"xfce", "", {DesktopKind::xfce, true}},
                    Case{"::XFCE", "", {DesktopKind::xfce, true}}));

INSTANTIATE_TEST_SUITE_P(WindowManagersWhereTheSessionIsNotKnown, HostDesktopOf,
                         testing::Values(Case{"", "KWin", {DesktopKind::plasma, false}},
                                         Case{"LXQt", "Xfwm4", {DesktopKind::xfce, false}},
                                         Case{"", "Metacity", {DesktopKind::metacity, false}},
                                         Case{"", "Metacity (Marco)", {DesktopKind::mate, false}},
                                         Case{
                                             "", "Mutter (Muffin)", {DesktopKind::cinnamon, false}},
                                         Case{"", "Openbox", {DesktopKind::other, false}},
                                         Case{"", "", {DesktopKind::other, false}},
                                         Case{":::", "", {DesktopKind::other, false}}));

// These call themselves descendants of GNOME, but read settings of their own.
INSTANTIATE_TEST_SUITE_P(
    SessionsWithAWindowManagerOfTheirOwn, HostDesktopOf,
    testing::Values(Case{"Budgie:GNOME", "Mutter(Budgie)", {DesktopKind::other, false}},
                    Case{"Unity:Unity7:ubuntu", "Compiz", {DesktopKind::other, false}},
                    Case{"Pantheon", "Mutter(Gala)", {DesktopKind::other, false}}));

}  // namespace
}  // namespace lumatile
