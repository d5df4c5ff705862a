#include "platform/windows/WindowKind.h"

#include <set>
#include <string_view>

#include <gtest/gtest.h>

namespace lumatile {
namespace {

constexpr WindowKind everyKind[] = {
    WindowKind::normal,       WindowKind::dialog, WindowKind::utility, WindowKind::toolbar,
    WindowKind::menu,         WindowKind::splash, WindowKind::dock,    WindowKind::desktop,
    WindowKind::notification, WindowKind::popup,  WindowKind::other};

TEST(WindowKind, normalWindowsAloneAreStandard) {
    for (const WindowKind kind : everyKind) {
        EXPECT_EQ(subroleOf(kind) == "AXStandardWindow", kind == WindowKind::normal);
    }
}

TEST(WindowKind, eachHasASubroleOfItsOwn) {
    std::set<std::string_view> subroles;
    for (const WindowKind kind : everyKind) {
        EXPECT_TRUE(subroles.insert(subroleOf(kind)).second) << subroleOf(kind);
    }
}

TEST(WindowKind, docksDesktopsAndLayersAreFurniture) {
    for (const WindowKind kind : everyKind) {
        EXPECT_EQ(isFurniture(kind), kind == WindowKind::dock || kind == WindowKind::desktop ||
                                         kind == WindowKind::other);
    }
}

}  // namespace
}  // namespace lumatile
