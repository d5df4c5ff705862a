#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/freedesktop/bus/DisplayToken.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {

/// How a program ended and what it wrote.
struct Outcome {
    int status = -1;
    std::string text;

    bool operator==(const Outcome&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
    return stream << outcome.status << ": " << outcome.text;
}

/// The running program on a desktop of its own, and other programs that ask it for things.
class ControlledProgram {
public:
    ControlledProgram() : desktop_(MonitorLayout::landscape(), WindowManager::Kind::openbox) {}

    /// On a desktop without a window manager.
    explicit ControlledProgram(std::nullptr_t) : desktop_(MonitorLayout::landscape()) {}

    TestDesktop& desktop() { return desktop_; }
    LumatileProcess& program() { return *program_; }

    /// Returns when it can be asked.
    void start() {
        startUnheard();
        ASSERT_TRUE(isHeard());
    }

    void startUnheard() {
        program_ = std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM);
    }

    std::string name() const { return "org.lumatile.Control." + displayToken(desktop_.display()); }

    /// Waits until something has the program's name.
    bool isHeard() {
        return run({"gdbus", "wait", "--session", "--timeout", "20", name()}) == Outcome{0, ""};
    }

    Outcome run(const std::vector<std::string>& command) {
        const std::string name = "asked-" + std::to_string(++count_);
        ChildProcess process = desktop_.session().start(command, name);
        const auto exit = process.wait(Deadline::usual());
        if (!exit || !exit->status) {
            throw DesktopError("it does not end by itself: " + command.front());
        }
        return {*exit->status, desktop_.session().output(name)};
    }

    Outcome ask(std::vector<std::string> words) {
        words.insert(words.begin(), LUMATILECTL_PROGRAM);
        return run(words);
    }

    std::string stored() {
        std::ifstream file(program_->settingsFile());
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

private:
    TestDesktop desktop_;
    std::unique_ptr<LumatileProcess> program_;
    int count_ = 0;
};

}  // namespace lumatile::desktop
