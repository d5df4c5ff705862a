#include "platform/x11/X11GeometryListening.h"

namespace lumatile {

namespace {

// Its properties are listened to at all times: they change seldom.
constexpr std::uint32_t clientsWithoutGeometry = XCB_EVENT_MASK_PROPERTY_CHANGE;
constexpr std::uint32_t geometry = XCB_EVENT_MASK_STRUCTURE_NOTIFY;

}  // namespace

void X11GeometryListening::listenToClient(xcb_window_t client) {
    select(client, clientsWithoutGeometry | geometry);
}

void X11GeometryListening::listenToFrame(xcb_window_t topLevel) {
    // A client without a frame has its events selected already, more of them than a frame has.
    if (table_.find(topLevel) == nullptr) {
        select(topLevel, geometry);
    }
}

void X11GeometryListening::noteEvent(X11Window& client) {
    // Others need to hear of panels: what they reserve counts while they are mapped.
    if (isFurniture(client.facts.kind()) ||
        !client.geometryEvents.note(X11EventBurst::Clock::now(), reading_)) {
        return;
    }
    table_.eachIn(client.topLevel, [this](X11Window& each) { stopListening(each); });
    if (client.topLevel != client.id && table_.find(client.topLevel) == nullptr) {
        select(client.topLevel, XCB_EVENT_MASK_NO_EVENT);
    }
}

bool X11GeometryListening::isSame(const xcb_get_window_attributes_reply_t& attributes) {
    return (attributes.your_event_mask & clientsWithoutGeometry) != 0;
}

void X11GeometryListening::stopListening(X11Window& client) {
    if (!std::exchange(client.isUnheard, true)) {
        unheard_.push_back(client.id);
    }
    // Also of one that counts as unheard: somebody else may have asked for its events since.
    select(client.id, clientsWithoutGeometry);
}

void X11GeometryListening::select(xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &mask);
}

}  // namespace lumatile
