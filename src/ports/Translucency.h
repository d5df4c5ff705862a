#pragma once

namespace lumatile {

/// Port: whether windows can be translucent at this moment.
class Translucency {
public:
    virtual ~Translucency() = default;

    /// False where what is drawn translucent would come out solid. May change at any time, so it is
    /// asked for whenever something is shown.
    virtual bool isAvailable() = 0;
};

}  // namespace lumatile
