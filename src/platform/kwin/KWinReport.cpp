#include "platform/kwin/KWinReport.h"

#include <array>
#include <cmath>
#include <utility>

#include "base/BoundedJSON.h"
#include "platform/freedesktop/files/DesktopEntries.h"

namespace lumatile {

namespace {

using nlohmann::json;

constexpr JSONLimits limits{
    .bytes = KWinReport::longestText, .depth = 6, .stringBytes = 4096, .values = 200'000};

constexpr std::size_t longestId = 128;
constexpr std::size_t longestName = 1024;

// As the script says it.
constexpr std::array kinds{std::pair(std::string_view("normal"), WindowKind::normal),
                           std::pair(std::string_view("dialog"), WindowKind::dialog),
                           std::pair(std::string_view("utility"), WindowKind::utility),
                           std::pair(std::string_view("toolbar"), WindowKind::toolbar),
                           std::pair(std::string_view("menu"), WindowKind::menu),
                           std::pair(std::string_view("splash"), WindowKind::splash),
                           std::pair(std::string_view("dock"), WindowKind::dock),
                           std::pair(std::string_view("desktop"), WindowKind::desktop),
                           std::pair(std::string_view("notification"), WindowKind::notification),
                           std::pair(std::string_view("popup"), WindowKind::popup),
                           std::pair(std::string_view("other"), WindowKind::other)};

using Result = KWinDone::Result;
constexpr std::array results{std::pair(std::string_view("done"), Result::done),
                             std::pair(std::string_view("placed"), Result::placed),
                             std::pair(std::string_view("asked"), Result::asked),
                             std::pair(std::string_view("refused"), Result::refused),
                             std::pair(std::string_view("gone"), Result::failed),
                             std::pair(std::string_view("failed"), Result::failed),
                             std::pair(std::string_view("unknown"), Result::failed)};

template <class Table>
auto lookup(const Table& table, const std::string& word)
    -> std::optional<typename Table::value_type::second_type> {
    for (const auto& [name, value] : table) {
        if (name == word) {
            return value;
        }
    }
    return std::nullopt;
}

std::optional<double> coordinate(const json& value, std::string_view key) {
    const json* const found = BoundedJSON::member(value, key);
    const auto number = found != nullptr ? BoundedJSON::number(*found) : std::nullopt;
    return number && std::abs(*number) <= KWinReport::farthest ? number : std::nullopt;
}

std::optional<std::string> text(const json& value, std::string_view key, std::size_t longest) {
    const json* const found = BoundedJSON::member(value, key);
    auto string = found != nullptr ? BoundedJSON::string(*found) : std::nullopt;
    return string && string->size() <= longest ? string : std::nullopt;
}

std::optional<bool> flag(const json& value, std::string_view key) {
    const json* const found = BoundedJSON::member(value, key);
    return found != nullptr ? BoundedJSON::boolean(*found) : std::nullopt;
}

template <class Integer>
std::optional<Integer> whole(const json& value, std::string_view key) {
    const json* const found = BoundedJSON::member(value, key);
    return found != nullptr ? BoundedJSON::integer<Integer>(*found) : std::nullopt;
}

std::optional<std::string> idIn(const json& value) {
    auto id = text(value, "id", longestId);
    return id && !id->empty() ? id : std::nullopt;
}

std::optional<Point> pointIn(const json& value, std::string_view key) {
    const json* const found = BoundedJSON::member(value, key);
    if (found == nullptr) {
        return std::nullopt;
    }
    const auto x = coordinate(*found, "x");
    const auto y = coordinate(*found, "y");
    return x && y ? std::optional(Point{*x, *y}) : std::nullopt;
}

std::optional<Rect> rectIn(const json& value, std::string_view key) {
    const json* const found = BoundedJSON::member(value, key);
    const auto origin = pointIn(value, key);
    if (found == nullptr || !origin) {
        return std::nullopt;
    }
    const auto width = coordinate(*found, "width");
    const auto height = coordinate(*found, "height");
    if (!width || !height || *width < 0 || *height < 0) {
        return std::nullopt;
    }
    return Rect{origin->x, origin->y, *width, *height};
}

std::optional<KWinWindowRecord> windowIn(const json& value) {
    auto id = idIn(value);
    const auto pid = whole<Pid>(value, "pid");
    const auto frame = rectIn(value, "frame");
    const auto word = text(value, "kind", longestName);
    const auto kind = word ? lookup(kinds, *word) : std::nullopt;
    const auto minimized = flag(value, "isMinimized");
    const auto fullScreen = flag(value, "isFullScreen");
    const auto maximized = flag(value, "isMaximized");
    const auto tiled = flag(value, "isTiled");
    const auto shaded = flag(value, "isShaded");
    const auto elsewhere = flag(value, "isElsewhere");
    const auto movable = flag(value, "isMovable");
    const auto resizable = flag(value, "isResizable");
    if (!id || !pid || !frame || !kind || !minimized || !fullScreen || !maximized || !tiled ||
        !shaded || !elsewhere || !movable || !resizable) {
        return std::nullopt;
    }
    // A name that is too long is none.
    auto application = text(value, "application", longestName);
    if (!application || application->empty()) {
        application = text(value, "class", longestName);
        if (application) {
            application = DesktopEntries::inSmallLetters(*application);  // As KWin 5 does.
        }
    }
    if (application && application->empty()) {
        application.reset();
    }
    return KWinWindowRecord{*std::move(id), *pid,       std::move(application),
                            *kind,          *frame,     *minimized,
                            *fullScreen,    *maximized, *tiled,
                            *shaded,        *elsewhere, *movable,
                            *resizable};
}

std::optional<KWinScreen> screenIn(const json& value) {
    const auto frame = rectIn(value, "frame");
    const auto area = rectIn(value, "area");
    if (!frame || !area || frame->width <= 0 || frame->height <= 0) {
        return std::nullopt;
    }
    return KWinScreen{*frame, *area};
}

template <class Element, class Read>
std::vector<Element> listIn(const json& value, std::string_view key, std::size_t most, Read read) {
    std::vector<Element> elements;
    const json* const list = BoundedJSON::member(value, key);
    if (list == nullptr || !list->is_array()) {
        return elements;
    }
    for (const json& each : *list) {
        if (elements.size() == most) {
            break;
        }
        if (auto element = read(each)) {
            elements.push_back(*std::move(element));
        }
    }
    return elements;
}

std::vector<KWinScreen> screensIn(const json& value) {
    return listIn<KWinScreen>(value, "screens", KWinReport::mostScreens, screenIn);
}

/// @return absent where it is neither an id nor null
std::optional<std::optional<std::string>> activeIn(const json& value, std::string_view key) {
    const json* const found = BoundedJSON::member(value, key);
    if (found == nullptr) {
        return std::nullopt;
    }
    if (found->is_null()) {
        return std::optional<std::string>();
    }
    auto id = text(value, key, longestId);
    return id && !id->empty() ? std::optional(std::optional(*std::move(id))) : std::nullopt;
}

std::optional<KWinBorders> bordersIn(const json& value) {
    const json* const borders = BoundedJSON::member(value, "borders");
    const auto tiling = borders != nullptr ? flag(*borders, "tiling") : std::nullopt;
    const auto maximize = borders != nullptr ? flag(*borders, "maximize") : std::nullopt;
    return tiling && maximize ? std::optional(KWinBorders{*tiling, *maximize}) : std::nullopt;
}

std::optional<KWinEvent> eventIn(const json& value) {
    const auto name = text(value, "event", longestName);
    if (!name) {
        return std::nullopt;
    }
    if (*name == "all") {
        auto active = activeIn(value, "active");
        return KWinEvent(KWinEverything{
            listIn<KWinWindowRecord>(value, "windows", KWinReport::mostWindows, windowIn),
            screensIn(value), active ? *std::move(active) : std::nullopt, bordersIn(value)});
    }
    if (*name == "window") {
        const json* const record = BoundedJSON::member(value, "window");
        auto window = record != nullptr ? windowIn(*record) : std::nullopt;
        return window ? std::optional(KWinEvent(KWinWindowChanged{*std::move(window)}))
                      : std::nullopt;
    }
    if (*name == "gone") {
        auto id = idIn(value);
        return id ? std::optional(KWinEvent(KWinWindowGone{*std::move(id)})) : std::nullopt;
    }
    if (*name == "active") {
        auto active = activeIn(value, "id");
        return active ? std::optional(KWinEvent(KWinActivated{*std::move(active)})) : std::nullopt;
    }
    if (*name == "screens") {
        return KWinEvent(KWinScreensChanged{screensIn(value)});
    }
    if (*name == "borders") {
        const auto borders = bordersIn(value);
        return borders ? std::optional(KWinEvent(*borders)) : std::nullopt;
    }
    if (*name == "done") {
        const auto order = whole<std::uint64_t>(value, "order");
        const auto word = text(value, "result", longestName);
        const auto result = word ? lookup(results, *word) : std::nullopt;
        return order && result ? std::optional(KWinEvent(KWinDone{*order, *result})) : std::nullopt;
    }
    const auto place = pointIn(value, "place");
    if (!place) {
        return std::nullopt;
    }
    if (*name == "moved") {
        return KWinEvent(KWinMoved{*place});
    }
    const auto resize = flag(value, "isResize");
    if (!resize) {
        return std::nullopt;
    }
    if (*name == "moveBegan") {
        auto id = idIn(value);
        return id ? std::optional(KWinEvent(KWinMoveBegan{*std::move(id), *resize, *place}))
                  : std::nullopt;
    }
    const auto takenBack = flag(value, "isTakenBack");
    return *name == "moveEnded" && takenBack
               ? std::optional(KWinEvent(KWinMoveEnded{*resize, *takenBack, *place}))
               : std::nullopt;
}

}  // namespace

std::optional<std::vector<KWinEvent>> KWinReport::parse(std::string_view text) {
    const auto parsed = BoundedJSON::parse(text, limits);
    if (!parsed || !parsed->is_array()) {
        return std::nullopt;
    }
    std::vector<KWinEvent> events;
    events.reserve(parsed->size());
    for (const json& each : *parsed) {
        if (auto event = eventIn(each)) {
            events.push_back(*std::move(event));
        }
    }
    return events;
}

}  // namespace lumatile
