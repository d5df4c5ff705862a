#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Lumatile/ApplicationConductor.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {

/// A simulated desktop that the application runs on: a landscape screen with a panel, so that its
/// visible frame is (0, 24, 1920, 1080), and a program with the process id 100.
struct DesktopWithConductor : SimulatedDesktop {
    static constexpr std::string_view noProtection =
        R"({"orbitEnabled":false,"jitterEnabled":false})";

    std::shared_ptr<ApplicationConductor> conductor;
    ApplicationID editor;

    /// @param oledSettings the stored settings; none when empty
    explicit DesktopWithConductor(std::string_view oledSettings = noProtection) {
        plug("main", {0, 0, 1920, 1104});
        screens.addPanel("main", ScreenEdge::top, 24);
        editor = launch({.pid = 100, .applicationId = "editor"});
        if (!oledSettings.empty()) {
            preferences.storeOnDisk(OLEDSettings::preferenceKey, Bytes(oledSettings));
        }
        start();
    }

    /// Starts the application, anew if it runs.
    void start() {
        conductor.reset();
        conductor = std::make_shared<ApplicationConductor>(platform());
        conductor->setAccessibilityGranted();
        conductor->startFeatures();
    }

    /// Plugs in a portrait screen to the right; its visible frame is (1920, 0, 1080, 1920).
    void plugPortrait() {
        plug("tall", {1920, 0, 1080, 1944});
        screens.addPanel("tall", ScreenEdge::bottom, 24);
    }

    SnapCommand command(std::string_view nameKey, Axis axis = Axis::horizontal) const {
        const auto& commands = conductor->store().commands;
        const auto found = std::find_if(commands.begin(), commands.end(), [&](const auto& each) {
            return each.nameKey == nameKey && each.axis == axis;
        });
        EXPECT_NE(found, commands.end()) << nameKey;
        return found == commands.end() ? SnapCommand() : *found;
    }

    void run(std::string_view nameKey, Axis axis = Axis::horizontal) {
        conductor->performCommand(command(nameKey, axis));
    }

    static AXElementKey key(WindowID id) { return {SimulatedAccessibility::element(id)}; }

    /// The frame that `restore` would bring back.
    std::optional<Rect> remembered(WindowID id) const {
        const auto& history = conductor->snapExecution().frameHistory();
        const auto found = history.find(key(id));
        return found == history.end() ? std::nullopt : std::optional(found->second);
    }

    /// Where the orbit believes the window belongs.
    std::optional<Rect> home(WindowID id) const {
        const auto tracked = conductor->orbit().tracked(key(id));
        return tracked ? std::optional(tracked->home) : std::nullopt;
    }

    SimulatedWindow& model(WindowID id) { return *programs.find(id); }

    /// Makes the `nth` frame read from now fail, and no other.
    void failFrameRead(WindowID id, std::size_t nth) {
        traffic.before(AccessKind::read, AttributeName::position, nth, [this, id] {
            model(id).faults.unreadable.emplace(AttributeName::position);
        });
        traffic.before(AccessKind::read, AttributeName::position, nth + 1, [this, id] {
            model(id).faults.unreadable.erase(std::string(AttributeName::position));
        });
    }
};

}  // namespace lumatile
