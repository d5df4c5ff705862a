#pragma once

namespace lumatile {

/// What the idle dimmer darkens.
class DimSurface {
public:
    virtual ~DimSurface() = default;

    /// @param level from 0 (clear) to 1 (black); what lies outside counts as the nearer of the two
    virtual void setLevel(double level) = 0;
};

}  // namespace lumatile
