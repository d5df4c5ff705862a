#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kwin/KWinChannel.h"
#include "platform/kwin/KWinElement.h"
#include "platform/kwin/KWinMouseEventSource.h"
#include "platform/kwin/KWinPlacing.h"
#include "platform/kwin/KWinScreenList.h"
#include "platform/windows/PlacingWrites.h"
#include "platform/windows/WriteTimeouts.h"
#include "windows/AccessibilityPlatform.h"
#include "windows/PlacingWish.h"

namespace lumatile {

/// The windows of a KWin session: reads are answered from the mirror, writes are orders to the
/// script. Applications are processes; windows whose process is not known are one for each class of
/// window. The windows of this program, and whatever a user cannot move, are not standard ones.
class KWinAccessibilityPlatform final : public AccessibilityPlatform {
public:
    /// All outlive the platform.
    /// @param mouse while it tells a press, what was pressed is as it was then
    KWinAccessibilityPlatform(KWinChannel& channel, KWinScreenList& screens,
                              const KWinMouseEventSource& mouse);

    /// Whether the script answers. There is no permission that could be asked for.
    bool isTrusted(bool prompt) override;
    bool isPermissionPromptOnScreen() override { return false; }
    TrustObstacle trustObstacle() override;

    Element systemWideElement() override;
    Element applicationElement(Pid pid) override;

    /// The window whose press is being told, wherever the point is; else the one that had the focus
    /// last of those that lie there. Parts of windows are not known.
    std::optional<Element> elementAtPoint(const Point& point) override;

    std::optional<AttributeValue> read(const Element& element, std::string_view attribute) override;

    /// "AXPosition" and "AXSize" of windows alone can be written.
    bool write(const Element& element, std::string_view attribute,
               const AttributeValue& value) override;

    /// Writes to one window reach KWin as one order.
    void beginJoinedWrites(const Element& element) override { writes_.begin(element); }
    void endJoinedWrites() override { writes_.end(); }

    /// Writes to many windows reach KWin together.
    void beginWriteBatch() override { writes_.beginBatch(); }
    void endWriteBatch() override { writes_.endBatch(); }

    /// Position and size: no for one that is maximized or full-screen; writing takes it out of the
    /// first all the same.
    std::optional<bool> isSettable(const Element& element, std::string_view attribute) override;

    std::optional<Pid> pid(const Element& element) override;
    void setMessagingTimeout(const Element& element, double seconds) override;

private:
    // A window that KWin has been asked to place.
    struct Asked {
        std::string id;
        KWinPlacing placing;
        std::uint64_t order = 0;
        std::uint64_t framesBefore = 0;
        bool isInVain = false;  // The program has been asked for the same size before, and hangs.
    };

    KWinWindow* windowOf(const Element& element);
    std::vector<KWinWindow*> windowsOf(Pid pid);
    bool isOwn(const KWinWindow& window) const { return window.record.pid == ownPid_; }
    Rect frameOf(const KWinWindow& window) const;
    bool carryOut(const std::vector<PlacingWrites::Placement>& placements);
    bool isAnswered(const Asked& asked);
    bool conclude(const Asked& asked);
    std::optional<AttributeValue> readApplication(Pid pid, std::string_view attribute);
    std::optional<AttributeValue> readWindow(const KWinWindow& window, std::string_view attribute);

    KWinChannel& channel_;
    KWinScreenList& screens_;
    const KWinMouseEventSource& mouse_;
    Pid ownPid_;
    WriteTimeouts timeouts_;
    PlacingWrites writes_;
};

}  // namespace lumatile
