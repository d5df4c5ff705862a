#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedElement.h"
#include "platform/simulated/SimulatedPrograms.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedTraffic.h"
#include "platform/simulated/SimulatedWindowManager.h"
#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// Other programs' windows as attributes, answered from the model and recorded.
class SimulatedAccessibility final : public AccessibilityPlatform {
public:
    /// Longest wait for any element, seconds.
    static constexpr double longestTimeout = 0.25;

    /// All outlive it.
    SimulatedAccessibility(SimulatedClock& clock, SimulatedScreens& screens,
                           SimulatedPrograms& programs, SimulatedWindowManager& windowManager,
                           SimulatedTraffic& traffic)
        : clock_(clock),
          screens_(screens),
          programs_(programs),
          windowManager_(windowManager),
          traffic_(traffic) {}

    bool isTrusted(bool prompt) override;
    bool isPermissionPromptOnScreen() override { return isPromptOnScreen; }
    TrustObstacle trustObstacle() override { return obstacle; }
    Element systemWideElement() override;
    Element applicationElement(Pid pid) override;
    std::optional<Element> elementAtPoint(const Point& point) override;
    std::optional<AttributeValue> read(const Element& element, std::string_view attribute) override;
    bool write(const Element& element, std::string_view attribute,
               const AttributeValue& value) override;
    void beginJoinedWrites(const Element& element) override { joinedElement_ = element; }
    void endJoinedWrites() override { joinedElement_.reset(); }
    void beginWriteBatch() override { isBatching_ = true; }
    void endWriteBatch() override { isBatching_ = false; }
    std::optional<bool> isSettable(const Element& element, std::string_view attribute) override;
    std::optional<Pid> pid(const Element& element) override;
    void setMessagingTimeout(const Element& element, double seconds) override;

    /// Whether the session lets the program see and move windows; without, nothing can be read.
    void setTrusted(bool trusted) { isTrusted_ = trusted; }

    /// Whether the desktop answers a request with a prompt of its own, which then stays until
    /// `isPromptOnScreen` is cleared.
    bool hasPrompt = false;
    bool isPromptOnScreen = false;

    /// What the session lacks while the program is not trusted.
    TrustObstacle obstacle = TrustObstacle::unknown;

    /// The element whose writes belong together for now; empty when there is none. They are carried
    /// out one by one all the same.
    const Element& joinedElement() const { return joinedElement_; }

    /// Whether writes may be put off for now. None is.
    bool isBatching() const { return isBatching_; }

    /// How often the program asked whether it is trusted.
    std::size_t trustQuestions() const { return trustQuestions_; }

    /// What goes wrong with the element that knows the focus.
    SimulatedFaults systemWideFaults;

    /// Requests for permission shown to the user so far.
    std::size_t promptsShown() const { return promptsShown_; }

    /// The element of a window or a part of one, as a read of it would give.
    static Element element(SimulatedSubject subject);

    /// An application's element: by its process, or by itself where that is unknown or it is gone.
    Element element(ApplicationID id) const;

private:
    std::optional<AttributeValue> value(const SimulatedSubject& subject,
                                        std::string_view attribute);
    std::optional<AttributeValue> value(const SimulatedApplication& application,
                                        std::string_view attribute) const;
    std::optional<AttributeValue> value(const SimulatedWindow& window,
                                        std::string_view attribute) const;
    std::optional<AttributeValue> value(const SimulatedWindow& window, const SimulatedPart& part,
                                        std::string_view attribute) const;
    bool apply(const SimulatedSubject& subject, std::string_view attribute,
               const AttributeValue& value);
    bool place(SimulatedWindow& window, const WindowRequest& request);
    std::optional<bool> settable(const SimulatedSubject& subject, std::string_view attribute);
    std::optional<Pid> owningPid(const SimulatedSubject& subject);

    SimulatedApplication* applicationOf(const SimulatedSubject& subject);
    SimulatedWindow* windowOf(const SimulatedSubject& subject);
    const SimulatedFaults* faultsOf(const SimulatedSubject& subject);
    double timeoutOf(const SimulatedSubject& subject);

    /// Whether the subject's program answers; when it hangs, the time-out has passed by then.
    bool answers(const SimulatedSubject& subject);

    SimulatedClock& clock_;
    SimulatedScreens& screens_;
    SimulatedPrograms& programs_;
    SimulatedWindowManager& windowManager_;
    SimulatedTraffic& traffic_;
    Element joinedElement_;
    bool isBatching_ = false;
    std::size_t promptsShown_ = 0;
    std::size_t trustQuestions_ = 0;
    bool isTrusted_ = true;
};

}  // namespace lumatile
