#include "platform/x11/X11MouseEventSource.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <array>
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
    Tap(std::shared_ptr<X11MouseEventSource*> platform, std::shared_ptr<Watcher> watcher)
        : platform_(std::move(platform)), watcher_(std::move(watcher)) {}
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;
    ~Tap() override {
        watcher_.reset();
        if (*platform_ != nullptr) {
            (*platform_)->select();
        }
    }

    void enable() override {
        watcher_->isEnabled = true;
        if (*platform_ != nullptr) {
            (*platform_)->select();
        }
    }

private:
    std::shared_ptr<X11MouseEventSource*> platform_;
    std::shared_ptr<Watcher> watcher_;
};

X11MouseEventSource::X11MouseEventSource(X11Connection& connection, X11Monitors& monitors,
                                         RunLoop& runLoop)
    : connection_(connection),
      monitors_(monitors),
      runLoop_(runLoop),
      extension_(inputExtension(connection)),
      self_(std::make_shared<X11MouseEventSource*>(this)),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
}

X11MouseEventSource::~X11MouseEventSource() { *self_ = nullptr; }

std::unique_ptr<MouseTap> X11MouseEventSource::createTap(Mask mask, Handler handler) {
    if (extension_ == 0 || connection_.isLost()) {
        return nullptr;
    }
    const auto watcher = std::make_shared<Watcher>(Watcher{mask, std::move(handler)});
    watchers_.push_back(watcher);
    return std::make_unique<Tap>(self_, watcher);
}

void X11MouseEventSource::note(const xcb_generic_event_t& event) {
    if (X11Event::type(event) == XCB_MAPPING_NOTIFY) {
        if (X11Event::as<xcb_mapping_notify_event_t>(event).request == XCB_MAPPING_POINTER) {
            isMappingStale_ = true;
        }
        return;
    }
    if (X11Event::type(event) != XCB_GE_GENERIC) {
        return;
    }
    const auto& generic = X11Event::as<xcb_ge_generic_event_t>(event);
    if (extension_ == 0 || generic.extension != extension_) {
        return;
    }
    // An event carries the number of the last request that the server had carried out before.
    const bool isNew =
        question_ && static_cast<std::int32_t>(event.full_sequence - *question_) >= 0;
    const auto button = [&event] {
        return X11Event::as<xcb_input_raw_button_press_event_t>(event).detail;
    };
    switch (generic.event_type) {
        case XCB_INPUT_RAW_BUTTON_PRESS:
            add({Kind::press, button(), isNew});
            break;
        case XCB_INPUT_RAW_BUTTON_RELEASE:
            add({Kind::release, button(), isNew});
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
/// moves does not rest.
void X11MouseEventSource::noteMotion(bool isNew) {
    if (!looking_) {
        add({Kind::motion, 0, isNew});
        return;
    }
    hasMoved_ = true;
    if (std::exchange(isResting_, false)) {
        connection_.defer([self = self_] {
            if (*self != nullptr) {
                (*self)->select();
            }
        });
    }
}

void X11MouseEventSource::add(const Happening& happening) {
    const bool isMovement = happening.kind == Kind::motion || happening.kind == Kind::look;
    if (happenings_.empty()) {
        deferTelling();
    } else if (isMovement && happening.kind == happenings_.back().kind &&
               happening.isNew == happenings_.back().isNew) {
        return;
    }
    happenings_.push_back(happening);
}

void X11MouseEventSource::deferTelling() {
    connection_.defer([self = self_] {
        if (*self != nullptr) {
            (*self)->tellAll();
        }
    });
}

void X11MouseEventSource::tellAll() {
    xcb_connection_t* const server = connection_.get();
    const auto pointerCookie = xcb_query_pointer(server, connection_.root());
    if (std::exchange(isMappingStale_, false)) {
        const X11Reply<xcb_get_pointer_mapping_reply_t> mapping(
            xcb_get_pointer_mapping_reply(server, xcb_get_pointer_mapping(server), nullptr));
        logicalButtons_.clear();
        if (mapping) {
            const std::uint8_t* first = xcb_get_pointer_mapping_map(mapping.get());
            logicalButtons_.assign(first,
                                   first + xcb_get_pointer_mapping_map_length(mapping.get()));
        }
    }
    const X11Reply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(server, pointerCookie, nullptr));
    // Events that the server sent before its answer belong to the state that the answer tells of.
    // Those that it sent since then may have come along: of them the answer knows nothing.
    question_ = pointerCookie.sequence;
    connection_.readEvents();
    question_.reset();
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
    if (!pointer) {
        return;
    }
    const Point location = monitors_.fromRoot(
        Point{static_cast<double>(pointer->root_x), static_cast<double>(pointer->root_y)});
    const bool isHeld = (pointer->mask & XCB_BUTTON_MASK_1) != 0;
    const std::shared_ptr<X11MouseEventSource*> self = self_;
    for (auto happening = happenings.begin(); happening != happenings.end(); ++happening) {
        const bool isReleaseLost =
            !isHeld && std::none_of(happening, happenings.end(), [](const Happening& each) {
                return each.kind == Kind::release;
            });
        tell(*happening, location, isReleaseLost);
        if (*self == nullptr) {
            return;
        }
    }
}

void X11MouseEventSource::tell(const Happening& happening, const Point& location,
                               bool isReleaseLost) {
    const std::shared_ptr<X11MouseEventSource*> self = self_;
    switch (happening.kind) {
        case Kind::press:
            if (isLeft(happening.button)) {
                isLeftDown_ = true;
                told_ = location;
                stopLooking();
                select();
                tell(MouseEventType::leftMouseDown, location);
            }
            break;
        case Kind::release:
            if (isLeft(happening.button) && isLeftDown_) {
                if (looking_ && hasMovedTo(location)) {
                    tellMovement(location);
                }
                if (*self != nullptr) {
                    tellRelease(location);
                }
            }
            break;
        case Kind::motion:
        case Kind::look:
            if (!isLeftDown_) {
                break;
            }
            if (isReleaseLost) {
                tellRelease(location);
            } else if (happening.kind == Kind::look) {
                look(location);
            } else if (looking_) {
                hasMoved_ = true;
            } else {
                startLooking();
                tellMovement(location);
            }
            break;
        case Kind::devicesChanged:
            isMappingStale_ = true;
            selected_ = 0;
            tell(MouseEventType::tapDisabled, location);
            if (*self == nullptr) {
                break;
            }
            if (!isWanted()) {
                stopLooking();
            } else if (isLeftDown_ && !looking_) {
                // A movement may have been missed until the tap was enabled again.
                startLooking();
            }
            break;
    }
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
    } else if (!isResting_) {
        // Movements are asked for from now on, and looked for once more: one may have happened
        // between the look and the server's hearing of that.
        startLooking();
        isResting_ = true;
        select();
    } else {
        stopLooking();
    }
}

/// The time to the next look counts from now: a timer that was late would make up for it with looks
/// that follow each other at once, and the second of them finds a fast mouse at rest.
void X11MouseEventSource::startLooking() {
    looking_ = runLoop_.repeat(lookInterval, [this] { add({Kind::look, 0, false}); });
    isResting_ = false;
    select();
}

void X11MouseEventSource::stopLooking() {
    looking_.reset();
    hasMoved_ = false;
    isResting_ = false;
}

void X11MouseEventSource::tell(MouseEventType type, const Point& location) {
    const std::vector<std::weak_ptr<Watcher>> watchers = watchers_;
    for (const std::weak_ptr<Watcher>& each : watchers) {
        const std::shared_ptr<Watcher> watcher = each.lock();
        if (!watcher || !watcher->isEnabled) {
            continue;
        }
        if (type == MouseEventType::tapDisabled) {
            watcher->isEnabled = false;
        } else if ((watcher->mask & bit(type)) == 0) {
            continue;
        }
        watcher->handler({type, location});
    }
}

bool X11MouseEventSource::isLeft(std::uint32_t button) const {
    const std::size_t index = button - std::size_t{1};
    return index < logicalButtons_.size() ? logicalButtons_[index] == leftButton
                                          : button == leftButton;
}

bool X11MouseEventSource::isWanted() const {
    return std::any_of(watchers_.begin(), watchers_.end(), [](const auto& each) {
        const std::shared_ptr<Watcher> watcher = each.lock();
        return watcher && watcher->isEnabled;
    });
}

void X11MouseEventSource::select() {
    std::erase_if(watchers_, [](const auto& each) { return each.expired(); });
    std::uint32_t wanted = 0;
    if (isWanted()) {
        wanted = buttons | (isLeftDown_ && (!looking_ || isResting_) ? movements : 0);
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
