#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "geometry/Point.h"
#include "windows/AttributeValue.h"
#include "windows/Element.h"
#include "windows/TrustObstacle.h"

namespace lumatile {

/// A process id as the desktop reports it.
using Pid = std::int64_t;

/// Port: other programs' windows, as named attributes of elements (names in `AttributeName`).
/// Nothing here throws; whatever cannot be had is absent or false. A read that follows a write sees
/// that write. A write returns when the desktop has answered it or the element's time-out is over.
class AccessibilityPlatform {
public:
    virtual ~AccessibilityPlatform() = default;

    /// Whether this session lets the process control windows.
    /// @param prompt show the desktop's own request for permission where it has one
    virtual bool isTrusted(bool prompt) = 0;

    /// Whether the desktop's own request for permission can be seen; false also when that cannot be
    /// told.
    virtual bool isPermissionPromptOnScreen() = 0;

    /// What is in the way of the trust; to be asked only while there is none.
    virtual TrustObstacle trustObstacle() = 0;

    /// The element that knows what has the focus ("AXFocusedApplication").
    virtual Element systemWideElement() = 0;

    /// The element of an application. Made without asking: it exists for every `pid`, and its
    /// attributes are absent where there is no such application.
    virtual Element applicationElement(Pid pid) = 0;

    /// The innermost element at `point` of the accessibility space.
    virtual std::optional<Element> elementAtPoint(const Point& point) = 0;

    virtual std::optional<AttributeValue> read(const Element& element,
                                               std::string_view attribute) = 0;

    /// @return false when the attribute was not written
    virtual bool write(const Element& element, std::string_view attribute,
                       const AttributeValue& value) = 0;

    /// Says that the writes to `element` up to `endJoinedWrites` are one change, so that a platform
    /// which can ask for all of it at once may put them off until then. A write between the two
    /// tells whether its value can be asked for, not what came of it; a read between them sees what
    /// was written before it. One element at a time: a second one ends the first. Through
    /// `JoinedWrites`.
    virtual void beginJoinedWrites(const Element& /*element*/) {}

    /// Returns as a write does: when the desktop has answered or the time-out is over.
    virtual void endJoinedWrites() {}

    /// Says that the writes up to `endWriteBatch`, to however many elements, do not build on one
    /// another, so that a platform that has to wait for answers may ask for all of it first and
    /// wait once. A write between the two tells whether its value can be asked for, not what came
    /// of it; a read of an element that was written to comes after all of them. Through
    /// `WriteBatch`.
    virtual void beginWriteBatch() {}

    /// Returns when the desktop has answered all of it or the longest of the time-outs is over.
    virtual void endWriteBatch() {}

    /// Whether a background mover may write the attribute; absent when that cannot be told.
    virtual std::optional<bool> isSettable(const Element& element, std::string_view attribute) = 0;

    /// The process that owns the element; absent when unknown or gone.
    virtual std::optional<Pid> pid(const Element& element) = 0;

    /// Bounds every later wait for the element and, for an application, for its windows.
    /// @param seconds longest wait; adapters cap it at 0.25 s
    virtual void setMessagingTimeout(const Element& element, double seconds) = 0;
};

}  // namespace lumatile
