#include "tests/desktop/kwin/PlasmaDesk.h"

#include <signal.h>

#include <sstream>

#include "tests/desktop/support/ChildProcess.h"

namespace lumatile::desktop {

PlasmaDesk::PlasmaDesk() : PlasmaDesk(KWinDesktop::Options{}) {}

PlasmaDesk::PlasmaDesk(const KWinDesktop::Options& options,
                       const LumatileProcess::Settings& settings)
    : desktop_(options) {
    startProgram(settings);
}

void PlasmaDesk::startProgram(const LumatileProcess::Settings& settings) {
    program_ = std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM, settings);
}

void PlasmaDesk::press(std::string_view command) {
    const DefaultShortcut& shortcut = defaultShortcut(command);
    input().press(shortcut.modifiers(), shortcut.key);
}

std::string PlasmaDesk::edges() {
    const std::string name = "edges" + std::to_string(++questions_);
    ChildProcess question =
        desktop_.session().start({"gdbus", "call", "--session", "-d", "org.kde.KWin", "-o", "/KWin",
                                  "-m", "org.kde.KWin.supportInformation"},
                                 name);
    question.wait(Deadline::usual());
    const std::string text = desktop_.session().output(name);
    std::string found;
    for (const std::string_view key : {"electricBorderTiling: ", "electricBorderMaximize: "}) {
        const auto place = text.find(key);
        found += place == std::string::npos
                     ? "?"
                     : text.substr(place + key.size(), text[place + key.size()] == 't' ? 4 : 5);
        found += found.find(' ') == std::string::npos ? " " : "";
    }
    return found;
}

std::string PlasmaDesk::endProgram() {
    const auto exit = program_->stop();
    return LumatileProcess::isClean(exit) ? "" : "it did not end well:\n" + program_->output();
}

void PlasmaDesk::killProgram() {
    kill(program_->pid(), SIGKILL);
    program_->wait();
    program_.reset();
}

testing::AssertionResult reaches(const NativeWindow& window, const Rect& wanted) {
    if (waitInSession([&] { return window.frame() == wanted; })) {
        return testing::AssertionSuccess();
    }
    std::ostringstream text;
    text << "the window is " << window.state();
    return testing::AssertionFailure() << text.str();
}

}  // namespace lumatile::desktop
