#include "platform/simulated/SimulatedAccessibility.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "windows/AttributeName.h"

namespace lumatile {

namespace {

// Far beyond any desk; a rectangle that reaches further is a mistake of whoever asks for it.
constexpr double farthest = 1e6;

bool isSane(double coordinate) { return std::abs(coordinate) <= farthest; }

/// Absent for an element of another platform.
std::optional<SimulatedSubject> subjectOf(const Element& element) {
    const auto* simulated = dynamic_cast<const SimulatedElement*>(element.get());
    return simulated ? std::optional(simulated->subject()) : std::nullopt;
}

}  // namespace

bool SimulatedAccessibility::isTrusted(bool prompt) {
    ++trustQuestions_;
    if (prompt && !isTrusted_) {
        ++promptsShown_;
        isPromptOnScreen = hasPrompt;
    }
    return isTrusted_;
}

Element SimulatedAccessibility::systemWideElement() { return element(SystemWideSubject{}); }

Element SimulatedAccessibility::applicationElement(Pid pid) { return element(ProcessSubject{pid}); }

std::optional<Element> SimulatedAccessibility::elementAtPoint(const Point& point) {
    const Rect spot = screens_.toArrangement({point.x, point.y, 0, 0});
    const std::optional<WindowID> id = programs_.topmostAt(spot.origin());
    const SimulatedWindow* window = id ? programs_.find(*id) : nullptr;
    if (!isTrusted_ || !window || !answers(*id)) {
        return std::nullopt;
    }
    const Rect& frame = window->geometry.pixels;
    const auto& parts = window->traits.parts;
    for (std::size_t index = parts.size(); index > 0; --index) {
        if (parts[index - 1].frame.offsetBy(frame.x, frame.y).contains(spot.origin())) {
            return element(PartSubject{*id, index - 1});
        }
    }
    return element(*id);
}

std::optional<AttributeValue> SimulatedAccessibility::read(const Element& element,
                                                           std::string_view attribute) {
    traffic_.announce(AccessKind::read, attribute);
    const std::optional<SimulatedSubject> subject = subjectOf(element);
    if (!subject) {
        return std::nullopt;
    }
    std::optional<AttributeValue> result;
    if (answers(*subject)) {
        const SimulatedFaults* faults = faultsOf(*subject);
        if (!faults || !faults->unreadable.contains(attribute)) {
            result = value(*subject, attribute);
        }
        if (faults && result) {
            const auto wrong = faults->answers.find(attribute);
            if (wrong != faults->answers.end()) {
                result = wrong->second;
            }
        }
    }
    traffic_.note({AccessKind::read, *subject, std::string(attribute), result, result.has_value(),
                   clock_.wallSeconds()});
    return result;
}

bool SimulatedAccessibility::write(const Element& element, std::string_view attribute,
                                   const AttributeValue& value) {
    traffic_.announce(AccessKind::write, attribute);
    const std::optional<SimulatedSubject> subject = subjectOf(element);
    if (!subject) {
        return false;
    }
    bool isWritten = false;
    if (answers(*subject)) {
        const SimulatedFaults* faults = faultsOf(*subject);
        isWritten = (!faults || !faults->unwritable.contains(attribute)) &&
                    apply(*subject, attribute, value);
    }
    traffic_.note({AccessKind::write, *subject, std::string(attribute), value, isWritten,
                   clock_.wallSeconds()});
    return isWritten;
}

std::optional<bool> SimulatedAccessibility::isSettable(const Element& element,
                                                       std::string_view attribute) {
    traffic_.announce(AccessKind::settable, attribute);
    const std::optional<SimulatedSubject> subject = subjectOf(element);
    if (!subject) {
        return std::nullopt;
    }
    std::optional<bool> result;
    if (answers(*subject)) {
        const SimulatedFaults* faults = faultsOf(*subject);
        if (!faults || !faults->unreadable.contains(attribute)) {
            result = settable(*subject, attribute);
        }
    }
    traffic_.note({AccessKind::settable, *subject, std::string(attribute),
                   result ? std::optional<AttributeValue>(*result) : std::nullopt,
                   result.has_value(), clock_.wallSeconds()});
    return result;
}

std::optional<Pid> SimulatedAccessibility::pid(const Element& element) {
    traffic_.announce(AccessKind::pid, {});
    const std::optional<SimulatedSubject> subject = subjectOf(element);
    if (!subject) {
        return std::nullopt;
    }
    const std::optional<Pid> result = owningPid(*subject);
    traffic_.note(
        {AccessKind::pid, *subject, {}, std::nullopt, result.has_value(), clock_.wallSeconds()});
    return result;
}

void SimulatedAccessibility::setMessagingTimeout(const Element& element, double seconds) {
    const std::optional<SimulatedSubject> subject = subjectOf(element);
    if (!subject) {
        return;
    }
    const double capped = seconds > 0 ? std::min(seconds, longestTimeout) : longestTimeout;
    if (SimulatedWindow* window = windowOf(*subject)) {
        window->messagingTimeout = capped;
    } else if (SimulatedApplication* application = applicationOf(*subject)) {
        application->messagingTimeout = capped;
    }
}

Element SimulatedAccessibility::element(SimulatedSubject subject) {
    return std::make_shared<SimulatedElement>(subject);
}

Element SimulatedAccessibility::element(ApplicationID id) const {
    const SimulatedApplication* application = programs_.find(id);
    if (application && application->traits.pid) {
        return element(ProcessSubject{*application->traits.pid});
    }
    return element(SimulatedSubject(id));
}

std::optional<AttributeValue> SimulatedAccessibility::value(const SimulatedSubject& subject,
                                                            std::string_view attribute) {
    if (std::holds_alternative<SystemWideSubject>(subject)) {
        const std::optional<ApplicationID> focused = programs_.focusedApplication();
        if (attribute == AttributeName::focusedApplication && focused) {
            return element(*focused);
        }
        return std::nullopt;
    }
    if (const SimulatedWindow* window = windowOf(subject)) {
        if (const auto* part = std::get_if<PartSubject>(&subject)) {
            return value(*window, window->traits.parts[part->index], attribute);
        }
        return value(*window, attribute);
    }
    const SimulatedApplication* application = applicationOf(subject);
    return application ? value(*application, attribute) : std::nullopt;
}

std::optional<AttributeValue> SimulatedAccessibility::value(const SimulatedApplication& application,
                                                            std::string_view attribute) const {
    const auto asElement = [](std::optional<WindowID> id) {
        return id ? std::optional<AttributeValue>(element(SimulatedSubject(*id))) : std::nullopt;
    };
    if (attribute == AttributeName::role) {
        return std::string("AXApplication");
    }
    if (attribute == AttributeName::focusedWindow) {
        return asElement(programs_.focusedWindow(application));
    }
    if (attribute == AttributeName::mainWindow) {
        return asElement(programs_.mainWindow(application));
    }
    if (attribute == AttributeName::windows) {
        std::vector<Element> windows;
        for (const WindowID id : application.windows) {
            windows.push_back(element(SimulatedSubject(id)));
        }
        return windows;
    }
    if (attribute == AttributeName::enhancedUserInterface &&
        application.traits.enhancedUserInterface) {
        return *application.traits.enhancedUserInterface;
    }
    return std::nullopt;
}

std::optional<AttributeValue> SimulatedAccessibility::value(const SimulatedWindow& window,
                                                            std::string_view attribute) const {
    if (attribute == AttributeName::position) {
        return screens_.toAccessibility(window.geometry.current()).origin();
    }
    if (attribute == AttributeName::size) {
        return window.geometry.current().size();
    }
    if (attribute == AttributeName::role) {
        return window.traits.role;
    }
    if (attribute == AttributeName::subrole) {
        return window.traits.subrole;
    }
    if (attribute == AttributeName::minimized) {
        return window.traits.isMinimized;
    }
    if (attribute == AttributeName::fullScreen) {
        return window.traits.isFullScreen;
    }
    if (attribute == AttributeName::parent) {
        return element(window.application);
    }
    return std::nullopt;
}

std::optional<AttributeValue> SimulatedAccessibility::value(const SimulatedWindow& window,
                                                            const SimulatedPart& part,
                                                            std::string_view attribute) const {
    const Rect frame = screens_.toAccessibility(
        part.frame.offsetBy(window.geometry.pixels.x, window.geometry.pixels.y));
    if (attribute == AttributeName::position) {
        return frame.origin();
    }
    if (attribute == AttributeName::size) {
        return frame.size();
    }
    if (attribute == AttributeName::role) {
        return part.role;
    }
    if (attribute == AttributeName::parent) {
        return part.parent ? element(PartSubject{window.id, *part.parent})
                           : element(SimulatedSubject(window.id));
    }
    return std::nullopt;
}

bool SimulatedAccessibility::apply(const SimulatedSubject& subject, std::string_view attribute,
                                   const AttributeValue& value) {
    if (std::holds_alternative<PartSubject>(subject)) {
        return false;
    }
    if (SimulatedWindow* window = windowOf(subject)) {
        const Point* position = std::get_if<Point>(&value);
        if (attribute == AttributeName::position && position && isSane(position->x) &&
            isSane(position->y)) {
            return place(*window,
                         {screens_.toArrangement({position->x, position->y, 0, 0}).origin(), {}});
        }
        const Size* size = std::get_if<Size>(&value);
        if (attribute == AttributeName::size && size && isSane(size->width) &&
            isSane(size->height)) {
            return place(*window, {{}, *size});
        }
        return false;
    }
    SimulatedApplication* application = applicationOf(subject);
    const bool* flag = std::get_if<bool>(&value);
    if (application && flag && attribute == AttributeName::enhancedUserInterface &&
        application->traits.enhancedUserInterface) {
        application->traits.enhancedUserInterface = *flag;
        return true;
    }
    return false;
}

bool SimulatedAccessibility::place(SimulatedWindow& window, const WindowRequest& request) {
    const Rect current = window.geometry.current();
    const bool changesNothing = (!request.position || *request.position == current.origin()) &&
                                (!request.size || *request.size == current.size());
    if (changesNothing && !window.traits.isMaximized && !window.owesAnswer) {
        return true;
    }
    // A window manager that has not answered for this window before is not waited for again.
    const bool isWaitedFor = !window.owesAnswer;
    const WindowID id = window.id;
    const auto deadline = clock_.sinceStart() + SimulatedClock::fromSeconds(timeoutOf(id));
    const auto answer = windowManager_.request(id, request);
    if (isWaitedFor && !clock_.elapseTo(deadline, [&] { return answer->isSettled; })) {
        // The window may have closed meanwhile.
        if (SimulatedWindow* later = programs_.find(id)) {
            later->owesAnswer = true;
        }
    }
    return answer->isApplied;
}

std::optional<bool> SimulatedAccessibility::settable(const SimulatedSubject& subject,
                                                     std::string_view attribute) {
    const SimulatedWindow* window = windowOf(subject);
    const bool isFrame = attribute == AttributeName::position || attribute == AttributeName::size;
    if (window && isFrame && !std::holds_alternative<PartSubject>(subject)) {
        return window->traits.isMovable && !window->traits.isMaximized &&
               !window->traits.isFullScreen;
    }
    if (!value(subject, attribute)) {
        return std::nullopt;
    }
    return attribute == AttributeName::enhancedUserInterface;
}

std::optional<Pid> SimulatedAccessibility::owningPid(const SimulatedSubject& subject) {
    const SimulatedApplication* application = applicationOf(subject);
    const SimulatedFaults* faults = faultsOf(subject);
    if (!isTrusted_ || !application || application->faults.isPidUnreadable ||
        (faults && faults->isPidUnreadable)) {
        return std::nullopt;
    }
    return application->traits.pid;
}

SimulatedApplication* SimulatedAccessibility::applicationOf(const SimulatedSubject& subject) {
    if (const auto* process = std::get_if<ProcessSubject>(&subject)) {
        return programs_.findByPid(process->pid);
    }
    if (const auto* id = std::get_if<ApplicationID>(&subject)) {
        return programs_.find(*id);
    }
    const SimulatedWindow* window = windowOf(subject);
    return window ? programs_.find(window->application) : nullptr;
}

SimulatedWindow* SimulatedAccessibility::windowOf(const SimulatedSubject& subject) {
    if (const auto* id = std::get_if<WindowID>(&subject)) {
        return programs_.find(*id);
    }
    if (const auto* part = std::get_if<PartSubject>(&subject)) {
        SimulatedWindow* window = programs_.find(part->window);
        return window && part->index < window->traits.parts.size() ? window : nullptr;
    }
    return nullptr;
}

const SimulatedFaults* SimulatedAccessibility::faultsOf(const SimulatedSubject& subject) {
    if (std::holds_alternative<SystemWideSubject>(subject)) {
        return &systemWideFaults;
    }
    if (const SimulatedWindow* window = windowOf(subject)) {
        return &window->faults;
    }
    const SimulatedApplication* application = applicationOf(subject);
    return application ? &application->faults : nullptr;
}

double SimulatedAccessibility::timeoutOf(const SimulatedSubject& subject) {
    const SimulatedWindow* window = windowOf(subject);
    if (window && window->messagingTimeout) {
        return *window->messagingTimeout;
    }
    const SimulatedApplication* application = applicationOf(subject);
    return application ? application->messagingTimeout : longestTimeout;
}

bool SimulatedAccessibility::answers(const SimulatedSubject& subject) {
    const SimulatedApplication* application = applicationOf(subject);
    if (application && application->isHung) {
        clock_.elapseTo(clock_.sinceStart() + SimulatedClock::fromSeconds(timeoutOf(subject)));
        return false;
    }
    return isTrusted_;
}

}  // namespace lumatile
