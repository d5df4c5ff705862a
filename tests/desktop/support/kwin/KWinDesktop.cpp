#include "tests/desktop/support/kwin/KWinDesktop.h"

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::desktop {

KWinDesktop::KWinDesktop() : KWinDesktop(Options{}) {}

KWinDesktop::KWinDesktop(const Options& options)
    : options_(options),
      server_(session_, {static_cast<int>(options.outputs.size()), options.width, options.height,
                         options.pictures}) {
    connect();
    probe_ = std::make_unique<KWinProbe>(session_);
}

void KWinDesktop::connect() {
    input_ = std::make_unique<FakeInput>(server_.socket());
    arrangeOutputs(server_.socket(), options_.outputs, options_.primary);
}

void KWinDesktop::arrange(const std::vector<ArrangedOutput>& outputs, std::size_t primary) {
    arrangeOutputs(server_.socket(), outputs, primary);
    probe_->sync();
}

void KWinDesktop::restart() {
    input_.reset();
    server_.start();
    connect();
    probe_->load();
}

std::unique_ptr<NativeWindow> KWinDesktop::openWindow(const NativeWindow::Options& options) {
    return std::make_unique<NativeWindow>(session_, *probe_, options);
}

std::unique_ptr<TestWindow> KWinDesktop::openXWindow(const TestWindow::Options& options) {
    auto window = std::make_unique<TestWindow>(server_.display(), options);
    const auto seen = [&] {
        return probe_->find([&](const WindowState& state) { return state.xid == window->id(); });
    };
    if (!window->tryMap(Deadline::usual()) || !waitInSession([&] { return seen().has_value(); })) {
        throw DesktopError("KWin does not take the window over");
    }
    const std::string id = seen()->id;
    probe_->activate(id);
    if (!waitInSession([&] { return probe_->window(id)->active && window->isActive(); })) {
        throw DesktopError("the window does not become active");
    }
    return window;
}

}  // namespace lumatile::desktop
