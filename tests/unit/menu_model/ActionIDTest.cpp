#include "menu_model/ActionID.h"

#include <gtest/gtest.h>

#include <unordered_set>

namespace lumatile {
namespace {

TEST(ActionID, rawValuesAreStableAndReadBack) {
    EXPECT_EQ(rawValue(ActionID::settings), "settings");
    EXPECT_EQ(rawValue(ActionID::checkForUpdates), "checkForUpdates");
    EXPECT_EQ(rawValue(ActionID::about), "about");
    EXPECT_EQ(rawValue(ActionID::quit), "quit");
    for (const std::string_view text : actionRawValues) {
        EXPECT_EQ(rawValue(actionFromRawValue(text).value()), text);
    }
    EXPECT_EQ(actionFromRawValue("Quit"), std::nullopt);
    EXPECT_EQ(actionFromRawValue(""), std::nullopt);
}

TEST(ActionID, isHashable) {
    const std::unordered_set<ActionID> actions{ActionID::quit, ActionID::about, ActionID::quit};
    EXPECT_EQ(actions.size(), 2U);
}

}  // namespace
}  // namespace lumatile
