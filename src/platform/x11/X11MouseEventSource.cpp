#include "platform/x11/X11MouseEventSource.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

constexpr std::uint8_t leftButton = 1;

// From this version on raw events come in spite of grabs.
constexpr std::uint16_t majorVersion = 2;
constexpr std::uint16_t minorVersion = 1;

constexpr std::uint32_t buttons =
    XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
constexpr std::uint32_t devices = XCB_INPUT_XI_EVENT_MASK_HIERARCHY;
constexpr std::uint32_t movements = XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;

/// The extension's major opcode; 0 where it is missing or too old.
std::uint8_t inputExtension(const X11Connection& connection) {
    xcb_connection_t* const server = connection.get();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(server, &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return 0;
    }
    const X11Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        server, xcb_input_xi_query_version(server, majorVersion, minorVersion), nullptr));
    const bool isEnough = version && std::pair(version->major_version, version->minor_version) >=
                                         std::pair(majorVersion, minorVersion);
    return isEnough ? extension->major_opcode : std::uint8_t{0};
}

}  // namespace

class X11MouseEventSource::Tap final : public MouseTap {
public:
    Tap(X11MouseEventSource& source, Mask mask, Handler handler)
        : source_(source),
          sourceLife_(source.lifeline_.watch()),
          ear_(std::make_shared<Ear>(Ear{mask, std::move(handler)})),
          // It may end itself while it is told.
          place_(source.taps_.add([this, ear = ear_](const MouseEvent& event) {
              if (ear->isEnabled && event.type == MouseEventType::tapDisabled) {
                  setEnabled(false);
                  ear->handler(event);
              } else if (ear->isEnabled && (ear->mask & bit(event.type)) != 0) {
                  ear->handler(event);
              }
          })) {}
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;
    ~Tap() override {
        setEnabled(false);
        if (sourceLife_.isAlive()) {
            source_.select();
        }
    }

    void enable() override {
        setEnabled(true);
        if (sourceLife_.isAlive()) {
            source_.select();
        }
    }

private:
    struct Ear {
        Mask mask;
        Handler handler;
        bool isEnabled = false;
    };

    void setEnabled(bool enabled) {
        if (std::exchange(ear_->isEnabled, enabled) != enabled && sourceLife_.isAlive()) {
            source_.enabledTaps_ += enabled ? 1 : -1;
        }
    }

    X11MouseEventSource& source_;
    Lifeline::Watch sourceLife_;
    std::shared_ptr<Ear> ear_;
    ObserverList<const MouseEvent&>::Subscription place_;
};

X11MouseEventSource::X11MouseEventSource(X11Connection& connection, X11Monitors& monitors,
                                         RunLoop& runLoop)
    : connection_(connection),
      monitors_(monitors),
      runLoop_(runLoop),
      refreshRate_(connection, monitors.randr()),
      extension_(inputExtension(connection)),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
}

X11MouseEventSource::~X11MouseEventSource() = default;

std::unique_ptr<MouseTap> X11MouseEventSource::createTap(Mask mask, Handler handler) {
    if (extension_ == 0 || connection_.isLost()) {
        return nullptr;
    }
    return std::make_unique<Tap>(*this, mask, std::move(handler));
}

void X11MouseEventSource::note(const xcb_generic_event_t& event) {
    // An event carries the number of the last request that the server had carried out before.
    const bool isNew = question_ && !X11Event::isBefore(event, *question_);
    switch (X11Event::type(event)) {
        case XCB_MAPPING_NOTIFY:
            if (X11Event::as<xcb_mapping_notify_event_t>(event).request == XCB_MAPPING_POINTER) {
                isMappingStale_ = true;
            }
            return;
        case XCB_CONFIGURE_NOTIFY:
            if (isLeftDown_ && !looking_) {
                add({Kind::mayHaveMoved, 0, isNew});
            }
            return;
        case XCB_GE_GENERIC:
            break;
        default:
            return;
    }
    const auto& generic = X11Event::as<xcb_ge_generic_event_t>(event);
    if (extension_ == 0 || generic.extension != extension_) {
        return;
    }
    const auto noteButton = [&](Kind kind) {
        const auto& button = X11Event::as<xcb_input_raw_button_press_event_t>(event);
        add({kind, button.detail, isNew, button.time});
    };
    switch (generic.event_type) {
        case XCB_INPUT_RAW_BUTTON_PRESS:
            noteButton(Kind::press);
            break;
        case XCB_INPUT_RAW_BUTTON_RELEASE:
            noteButton(Kind::release);
            break;
        case XCB_INPUT_RAW_MOTION:
            noteMotion(isNew);
            break;
        case XCB_INPUT_HIERARCHY:
            add({Kind::devicesChanged, 0, isNew});
            break;
        default:
            break;
    }
}

/// While the pointer is looked at by the timer, the next look is soon enough, and a pointer that
/// moves does not rest. After a longer rest it is told at once, as the first movement is.
void X11MouseEventSource::noteMotion(bool isNew) {
    if (!looking_ || isAtRest()) {
        add({Kind::motion, 0, isNew});
        return;
    }
    hasMoved_ = true;
    if (std::exchange(restingLooks_, 0) > 0) {
        connection_.defer(lifeline_.guard([this] { select(); }));
    }
}

void X11MouseEventSource::add(const Happening& happening) {
    if (happenings_.empty()) {
        deferTelling();
    } else if (!happening.isButton() && happening.kind == happenings_.back().kind &&
               happening.isNew == happenings_.back().isNew) {
        return;
    }
    happenings_.push_back(happening);
}

void X11MouseEventSource::deferTelling() {
    connection_.defer(lifeline_.guard([this] { tellAll(); }));
}

void X11MouseEventSource::tellAll() {
    if (std::exchange(isHeldBack_, false)) {
        deferTelling();
        return;
    }
    const std::optional<Pointer> pointer = askPointer();
    std::vector<Happening> happenings = takeOld();
    if (!pointer) {
        return;
    }
    const Point now = monitors_.fromRoot(pointer->location);
    const Lifeline::Watch life = lifeline_.watch();
    for (auto happening = happenings.begin(); happening != happenings.end(); ++happening) {
        const Point place = placeOf({happening, happenings.end()}, *pointer);
        const bool isReleaseLost =
            !pointer->isHeld &&
            std::none_of(happening, happenings.end(),
                         [](const Happening& each) { return each.kind == Kind::release; });
        tell(*happening, place, isReleaseLost);
        if (!life.isAlive()) {
            return;
        }
        if (happening->kind == Kind::press && isLeft(happening->button) && place != now) {
            *happening = {Kind::mayHaveMoved};
            holdBack({happening, happenings.end()});
            return;
        }
    }
}

/// Where the pointer was at the first of these: a movement leads to the button that comes next.
Point X11MouseEventSource::placeOf(std::span<const Happening> happenings, const Pointer& pointer) {
    const auto button = std::find_if(happenings.begin(), happenings.end(),
                                     [](const Happening& each) { return each.isButton(); });
    if (button == happenings.end() || !pointer.trail) {
        return monitors_.fromRoot(pointer.location);
    }
    const auto later = std::count_if(
        std::next(button), happenings.end(),
        [&](const Happening& each) { return each.isButton() && each.time == button->time; });
    return monitors_.fromRoot(
        pointer.trail
            ->placeAt(button->time, static_cast<std::size_t>(later), monitors_.toRoot(told_))
            .value_or(pointer.location));
}

/// Puts off what comes after a press that is told late until the turn of the press is over: what
/// is said of the windows in that turn is how they were then.
void X11MouseEventSource::holdBack(std::vector<Happening> happenings) {
    isHeldBack_ = true;
    if (happenings_.empty()) {
        deferTelling();
    }
    happenings_.insert(happenings_.begin(), happenings.begin(), happenings.end());
}

std::optional<X11MouseEventSource::Pointer> X11MouseEventSource::askPointer() {
    xcb_connection_t* const server = connection_.get();
    const auto pointerCookie = xcb_query_pointer(server, connection_.root());
    const auto firstButton = std::find_if(happenings_.begin(), happenings_.end(),
                                          [](const Happening& each) { return each.isButton(); });
    std::optional<xcb_get_motion_events_cookie_t> trailCookie;
    if (firstButton != happenings_.end()) {
        trailCookie = X11PointerTrail::ask(server, connection_.root(), firstButton->time);
    }
    if (std::exchange(isMappingStale_, false)) {
        readMapping();
    }
    const X11Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(server, pointerCookie, nullptr));
    Pointer pointer;
    if (trailCookie) {
        pointer.trail.emplace(server, *trailCookie);
    }
    // Events that the server sent before its answer belong to the state that the answer tells of.
    // Those that it sent since then may have come along: of them the answer knows nothing.
    question_ = pointerCookie.sequence;
    connection_.readEvents();
    question_.reset();
    if (!reply) {
        return std::nullopt;
    }
    pointer.location = {static_cast<double>(reply->root_x), static_cast<double>(reply->root_y)};
    pointer.isHeld = (reply->mask & XCB_BUTTON_MASK_1) != 0;
    return pointer;
}

void X11MouseEventSource::readMapping() {
    xcb_connection_t* const server = connection_.get();
    const X11Reply<xcb_get_pointer_mapping_reply_t> mapping(
        xcb_get_pointer_mapping_reply(server, xcb_get_pointer_mapping(server), nullptr));
    logicalButtons_.clear();
    if (mapping) {
        const std::uint8_t* first = xcb_get_pointer_mapping_map(mapping.get());
        logicalButtons_.assign(first, first + xcb_get_pointer_mapping_map_length(mapping.get()));
    }
}

/// What had happened when the pointer was asked for; the rest stays for the next time.
std::vector<X11MouseEventSource::Happening> X11MouseEventSource::takeOld() {
    std::vector<Happening> happenings = std::exchange(happenings_, {});
    const auto firstNew = std::find_if(happenings.begin(), happenings.end(),
                                       [](const Happening& each) { return each.isNew; });
    if (firstNew != happenings.end()) {
        deferTelling();
        for (auto each = firstNew; each != happenings.end(); ++each) {
            each->isNew = false;
            happenings_.push_back(*each);
        }
        happenings.erase(firstNew, happenings.end());
    }
    return happenings;
}

void X11MouseEventSource::tell(const Happening& happening, const Point& location,
                               bool isReleaseLost) {
    const Lifeline::Watch life = lifeline_.watch();
    switch (happening.kind) {
        case Kind::press:
            if (isLeft(happening.button)) {
                tellPress(location);
            }
            break;
        case Kind::release:
            if (isLeft(happening.button) && isLeftDown_) {
                if (hasMovedTo(location)) {
                    tellMovement(location);
                }
                if (life.isAlive()) {
                    tellRelease(location);
                }
            }
            break;
        case Kind::motion:
        case Kind::look:
        case Kind::mayHaveMoved:
            if (!isLeftDown_) {
                break;
            }
            if (isReleaseLost) {
                tellRelease(location);
            } else if (happening.kind == Kind::look) {
                look(location);
            } else if (happening.kind == Kind::motion && looking_ && !isAtRest()) {
                hasMoved_ = true;
            } else if (happening.kind == Kind::motion || location != told_) {
                startLooking();
                tellMovement(location);
            } else if (!looking_) {
                startLooking();
            }
            break;
        case Kind::devicesChanged:
            isMappingStale_ = true;
            selected_ = 0;
            tell(MouseEventType::tapDisabled, location);
            if (!life.isAlive()) {
                break;
            }
            if (enabledTaps_ == 0) {
                stopLooking();
            } else if (isLeftDown_ && !looking_) {
                // A movement may have been missed until the tap was enabled again.
                startLooking();
            }
            break;
    }
}

void X11MouseEventSource::tellPress(const Point& location) {
    isLeftDown_ = true;
    told_ = location;
    stopLooking();
    select();
    tell(MouseEventType::leftMouseDown, location);
}

bool X11MouseEventSource::hasMovedTo(const Point& location) const {
    return hasMoved_ || location != told_;
}

void X11MouseEventSource::tellMovement(const Point& location) {
    hasMoved_ = false;
    told_ = location;
    tell(MouseEventType::leftMouseDragged, location);
}

void X11MouseEventSource::tellRelease(const Point& location) {
    isLeftDown_ = false;
    stopLooking();
    select();
    tell(MouseEventType::leftMouseUp, location);
}

void X11MouseEventSource::look(const Point& location) {
    if (!looking_) {
        return;  // It was on its way when the looking ended.
    }
    if (hasMovedTo(location)) {
        startLooking();
        tellMovement(location);
    } else if (!isAtRest()) {
        // Movements are asked for from now on, and looked for once more before the pointer counts
        // as at rest: one may have happened between the look and the server's hearing of that.
        ++restingLooks_;
        select();
    }
}

/// The time to the next look counts from now: a timer that was late would make up for it with looks
/// that follow each other at once, and the second of them finds a fast mouse at rest.
void X11MouseEventSource::startLooking() {
    looking_ = runLoop_.repeat(refreshRate_.frame(), [this] { add({Kind::look}); });
    restingLooks_ = 0;
    select();
}

void X11MouseEventSource::stopLooking() {
    looking_.reset();
    hasMoved_ = false;
    restingLooks_ = 0;
}

void X11MouseEventSource::tell(MouseEventType type, const Point& location) {
    taps_.notify({type, location});
}

bool X11MouseEventSource::isLeft(std::uint32_t button) const {
    const std::size_t index = button - std::size_t{1};
    return index < logicalButtons_.size() ? logicalButtons_[index] == leftButton
                                          : button == leftButton;
}

void X11MouseEventSource::select() {
    std::uint32_t wanted = 0;
    if (enabledTaps_ > 0) {
        wanted = buttons | (isLeftDown_ && (!looking_ || restingLooks_ > 0) ? movements : 0);
    } else {
        isLeftDown_ = false;
        stopLooking();
    }
    if (wanted == selected_ || connection_.isLost()) {
        return;
    }
    selected_ = wanted;
    struct Selection {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    };
    // Devices come and go for all devices together only.
    const std::array<Selection, 2> selections{
        {{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, wanted},
         {{XCB_INPUT_DEVICE_ALL, 1}, wanted != 0 ? devices : 0U}}};
    xcb_input_xi_select_events(connection_.get(), connection_.root(), selections.size(),
                               &selections.front().head);
    xcb_flush(connection_.get());
}

}  // namespace lumatile
