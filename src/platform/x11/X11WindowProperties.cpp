#include "platform/x11/X11WindowProperties.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "platform/freedesktop/files/DesktopEntries.h"
#include "platform/x11/X11PlainText.h"

namespace lumatile {

namespace {

constexpr std::uint32_t iconicState = 3;  // WM_STATE, by the window manager conventions.

// Bounds in items. Real lists hold a handful; the rest is room for window managers' own additions.
constexpr std::uint32_t longestAtomList = 64;
constexpr std::uint32_t sizeHintItems = 18;
constexpr std::uint32_t longestText = 2 * X11PlainText::longest / 4;

// No decoration and no shadow is as wide as this; one that says so would throw windows about.
constexpr std::uint32_t widestExtent = 1024;

X11Extents extents(const X11Property& property) {
    const auto items = property.items();
    if (items.size() != 4 || std::any_of(items.begin(), items.end(),
                                         [](std::uint32_t item) { return item > widestExtent; })) {
        return {};
    }
    return {static_cast<int>(items[0]), static_cast<int>(items[1]), static_cast<int>(items[2]),
            static_cast<int>(items[3])};
}

/// Some programs state the file's path or its suffix beside the id.
std::optional<std::string> desktopFileId(std::string_view text) {
    text.remove_prefix(std::min(text.size(), text.rfind('/') + 1));
    constexpr std::string_view suffix = ".desktop";
    if (text.ends_with(suffix)) {
        text.remove_suffix(suffix.size());
    }
    return X11PlainText::of(text);
}

/// The second of the two texts, which end with a zero byte each, in small letters: sessions under
/// Wayland know it so.
std::optional<std::string> className(std::string_view bytes) {
    const std::size_t end = bytes.find('\0');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view rest = bytes.substr(end + 1);
    return X11PlainText::of(DesktopEntries::inSmallLetters(rest.substr(0, rest.find('\0'))));
}

void tellWmState(const X11WindowProperties& /*properties*/, const X11Property& property,
                 X11WindowFacts& facts) {
    facts.isIconic = property.first() == iconicState;
}

void tellTransient(const X11WindowProperties& /*properties*/, const X11Property& property,
                   X11WindowFacts& facts) {
    facts.isTransient = property.first().value_or(XCB_WINDOW_NONE) != XCB_WINDOW_NONE;
}

void tellDecoration(const X11WindowProperties& /*properties*/, const X11Property& property,
                    X11WindowFacts& facts) {
    facts.decoration = extents(property);
}

void tellShadow(const X11WindowProperties& /*properties*/, const X11Property& property,
                X11WindowFacts& facts) {
    facts.shadow = extents(property);
    facts.statesShadow = property.isList();
}

void tellSizeHints(const X11WindowProperties& /*properties*/, const X11Property& property,
                   X11WindowFacts& facts) {
    facts.sizeHints = X11SizeHints::decode(property.items());
}

void tellPid(const X11WindowProperties& /*properties*/, const X11Property& property,
             X11WindowFacts& facts) {
    const std::uint32_t pid = property.first().value_or(0);
    facts.statedPid.reset();
    if (pid > 0 && pid <= std::uint32_t{std::numeric_limits<std::int32_t>::max()}) {
        facts.statedPid = Pid{pid};
    }
}

void tellDesktop(const X11WindowProperties& /*properties*/, const X11Property& property,
                 X11WindowFacts& facts) {
    facts.desktop = property.first();
}

void tellClass(const X11WindowProperties& /*properties*/, const X11Property& property,
               X11WindowFacts& facts) {
    facts.windowClass = className(property.bytes());
}

void tellGtkApplication(const X11WindowProperties& /*properties*/, const X11Property& property,
                        X11WindowFacts& facts) {
    facts.gtkApplication = desktopFileId(property.bytes());
}

void tellDesktopFile(const X11WindowProperties& /*properties*/, const X11Property& property,
                     X11WindowFacts& facts) {
    facts.desktopFile = desktopFileId(property.bytes());
}

}  // namespace

X11WindowProperties::X11WindowProperties(X11Atoms& atoms)
    : kinds_{
          {atoms["_NET_WM_WINDOW_TYPE_NORMAL"], WindowKind::normal},
          {atoms["_NET_WM_WINDOW_TYPE_DIALOG"], WindowKind::dialog},
          {atoms["_NET_WM_WINDOW_TYPE_UTILITY"], WindowKind::utility},
          {atoms["_NET_WM_WINDOW_TYPE_TOOLBAR"], WindowKind::toolbar},
          {atoms["_NET_WM_WINDOW_TYPE_MENU"], WindowKind::menu},
          {atoms["_NET_WM_WINDOW_TYPE_SPLASH"], WindowKind::splash},
          {atoms["_NET_WM_WINDOW_TYPE_DOCK"], WindowKind::dock},
          {atoms["_NET_WM_WINDOW_TYPE_DESKTOP"], WindowKind::desktop},
          {atoms["_NET_WM_WINDOW_TYPE_NOTIFICATION"], WindowKind::notification},
          {atoms["_NET_WM_WINDOW_TYPE_POPUP_MENU"], WindowKind::popup},
          {atoms["_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"], WindowKind::popup},
          {atoms["_NET_WM_WINDOW_TYPE_TOOLTIP"], WindowKind::popup},
          {atoms["_NET_WM_WINDOW_TYPE_COMBO"], WindowKind::popup},
          {atoms["_NET_WM_WINDOW_TYPE_DND"], WindowKind::popup},
      },
      hidden_(atoms["_NET_WM_STATE_HIDDEN"]),
      fullScreen_(atoms["_NET_WM_STATE_FULLSCREEN"]),
      maximizedHorizontally_(atoms["_NET_WM_STATE_MAXIMIZED_HORZ"]),
      maximizedVertically_(atoms["_NET_WM_STATE_MAXIMIZED_VERT"]),
      shaded_(atoms["_NET_WM_STATE_SHADED"]),
      actionMove_(atoms["_NET_WM_ACTION_MOVE"]),
      actionResize_(atoms["_NET_WM_ACTION_RESIZE"]) {
    const xcb_atom_t text = atoms["UTF8_STRING"];
    const xcb_atom_t wmState = atoms["WM_STATE"];
    const xcb_atom_t atom = XCB_ATOM_ATOM;
    const xcb_atom_t cardinal = XCB_ATOM_CARDINAL;
    rows_ = {
        {wmState, wmState, X11Property::singleItem, true, tellWmState},
        {atoms["_NET_WM_STATE"], atom, longestAtomList, true, tellState},
        {atoms["_NET_WM_ALLOWED_ACTIONS"], atom, longestAtomList, true, tellActions},
        {atoms["_NET_FRAME_EXTENTS"], cardinal, 4, true, tellDecoration},
        {atoms["_NET_WM_DESKTOP"], cardinal, X11Property::singleItem, true, tellDesktop},
        {atoms["_NET_WM_WINDOW_TYPE"], atom, longestAtomList, false, tellKind},
        {XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, X11Property::singleItem, false, tellTransient},
        {atoms["_GTK_FRAME_EXTENTS"], cardinal, 4, false, tellShadow},
        {XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, sizeHintItems, false, tellSizeHints},
        {atoms["_NET_WM_PID"], cardinal, X11Property::singleItem, false, tellPid},
        {XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, longestText, false, tellClass},
        {atoms["_GTK_APPLICATION_ID"], text, longestText, false, tellGtkApplication},
        {atoms["_KDE_NET_WM_DESKTOP_FILE"], text, longestText, false, tellDesktopFile},
    };
}

X11WindowProperties::Mask X11WindowProperties::maskOf(xcb_atom_t name) const {
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (rows_[row].name == name) {
            return Mask{1} << row;
        }
    }
    return 0;
}

bool X11WindowProperties::isWindowManagers(xcb_atom_t name) const {
    return std::any_of(rows_.begin(), rows_.end(),
                       [&](const Row& row) { return row.name == name && row.isWindowManagers; });
}

xcb_get_property_cookie_t X11WindowProperties::ask(std::size_t row, xcb_connection_t* connection,
                                                   xcb_window_t window) const {
    return X11Property::ask(connection, window, rows_[row].name, rows_[row].type,
                            rows_[row].longLength);
}

void X11WindowProperties::tell(std::size_t row, const X11Property& property,
                               X11WindowFacts& facts) const {
    rows_[row].tell(*this, property, facts);
}

void X11WindowProperties::tellState(const X11WindowProperties& properties,
                                    const X11Property& property, X11WindowFacts& facts) {
    facts.isHidden = property.has(properties.hidden_);
    facts.isFullScreen = property.has(properties.fullScreen_);
    facts.isMaximizedHorizontally = property.has(properties.maximizedHorizontally_);
    facts.isMaximizedVertically = property.has(properties.maximizedVertically_);
    facts.isShaded = property.has(properties.shaded_);
}

void X11WindowProperties::tellKind(const X11WindowProperties& properties,
                                   const X11Property& property, X11WindowFacts& facts) {
    facts.statedKind.reset();
    // In order of preference; types of some desktop's own stand beside a common one.
    for (const std::uint32_t item : property.items()) {
        const auto found =
            std::find_if(properties.kinds_.begin(), properties.kinds_.end(),
                         [&](const Kind& candidate) { return candidate.name == item; });
        if (found != properties.kinds_.end()) {
            facts.statedKind = found->kind;
            return;
        }
    }
}

void X11WindowProperties::tellActions(const X11WindowProperties& properties,
                                      const X11Property& property, X11WindowFacts& facts) {
    const bool stated = property.isList();
    facts.allowsMove = !stated || property.has(properties.actionMove_);
    facts.allowsResize = !stated || property.has(properties.actionResize_);
}

}  // namespace lumatile
