#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/desktop/support/WindowManager.h"

namespace lumatile::desktop {

/// A window manager as the parameter of a test suite; its name is part of the test's.
class ShiftingTest : public testing::TestWithParam<WindowManager::Kind> {
public:
    static std::string nameOf(const testing::TestParamInfo<WindowManager::Kind>& kind) {
        return toString(kind.param);
    }
};

}  // namespace lumatile::desktop
