#include "tests/desktop/kwin/PlasmaDesk.h"

#include <signal.h>

#include <fstream>
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

void PlasmaDesk::keepWindowsFromPushing() {
    std::ofstream(desktop_.session().configuration() / "kwinrc") << "[Windows]\n";
    run({"gdbus", "call", "--session", "-d", "org.kde.KWin", "-o", "/KWin", "-m",
         "org.kde.KWin.reconfigure"});
}

std::string PlasmaDesk::run(const std::vector<std::string>& command) {
    const std::string name = "question" + std::to_string(++questions_);
    ChildProcess question = desktop_.session().start(command, name);
    const auto exit = question.wait(Deadline::usual());
    const bool isWell = exit && exit->status == 0;
    return (isWell ? "" : std::to_string(exit ? exit->status.value_or(-1) : -1) + ": ") +
           desktop_.session().output(name);
}

std::string PlasmaDesk::ask(const std::vector<std::string>& words) {
    std::vector<std::string> command{LUMATILECTL_PROGRAM};
    command.insert(command.end(), words.begin(), words.end());
    return run(command);
}

std::string PlasmaDesk::edges() {
    const std::string text = run({"gdbus", "call", "--session", "-d", "org.kde.KWin", "-o", "/KWin",
                                  "-m", "org.kde.KWin.supportInformation"});
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

void PlasmaDesk::setLayouts(const std::string& names, const std::string& variants) {
    std::ofstream(desktop_.session().configuration() / "kxkbrc")
        << "[Layout]\nUse=true\nLayoutList=" << names << "\nVariantList=" << variants << "\n";
    // As Plasma's page for keyboards says it.
    run({"gdbus", "emit", "--session", "--object-path", "/Layouts", "--signal",
         "org.kde.keyboard.reloadConfig"});
}

void PlasmaDesk::chooseLayout(unsigned index) {
    // With one layout there is no such service; it comes with the second.
    run({"gdbus", "wait", "--session", "--timeout", "20", "org.kde.keyboard"});
    run({"gdbus", "call", "--session", "-d", "org.kde.keyboard", "-o", "/Layouts", "-m",
         "org.kde.KeyboardLayouts.setLayout", std::to_string(index)});
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
