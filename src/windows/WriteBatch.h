#pragma once

#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// The writes while it lives do not build on one another: they may be asked for together.
class WriteBatch {
public:
    /// @param platform outlives this
    explicit WriteBatch(AccessibilityPlatform& platform) : platform_(platform) {
        platform_.beginWriteBatch();
    }
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;
    ~WriteBatch() { platform_.endWriteBatch(); }

private:
    AccessibilityPlatform& platform_;
};

}  // namespace lumatile
