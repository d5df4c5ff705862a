#pragma once

#include <QApplication>

#include "platform/freedesktop/process/TerminationSignals.h"
#include "platform/qt/QtRunLoop.h"
#include "ports/PresentSession.h"

namespace lumatile {

/// The toolkit's application object, made as the session wants it.
class ToolkitApplication {
public:
    /// @param count and `words` as the program was started; they outlive this
    ToolkitApplication(const SessionFacts& facts, int count, char** words);

    /// Ends `run` with the status of a program that did what it was asked.
    static void terminate();

    /// Does so when a signal asks for it.
    /// @param signals and `runLoop` outlive what is returned
    [[nodiscard]] static QtRunLoop::Watch terminateOn(TerminationSignals& signals,
                                                      QtRunLoop& runLoop);

    /// @return the program's exit status
    static int run() { return QApplication::exec(); }

private:
    int count_;
    QApplication application_;
};

}  // namespace lumatile
