#pragma once

#include <functional>
#include <string>

#include "platform/qt/QtRunLoop.h"
#include "ports/PresentSession.h"

namespace lumatile {

class SystemLog;

/// The session's part of the run loop. Ends the program when the window system goes away, or begins
/// it again where the desktop starts that anew, with one line in the log, whoever notices first:
/// the session, or the toolkit, which has a connection of its own and ends the program with a word
/// of its own. There is one in a process.
class SessionWatch {
public:
    /// @param runLoop and `log` outlive this, as does the session behind `events`
    /// @param abandoned called last where the program ends or begins again without being taken
    /// apart
    SessionWatch(SessionEvents events, const SessionFacts& facts, QtRunLoop& runLoop,
                 SystemLog& log, std::function<void()> abandoned);
    SessionWatch(const SessionWatch&) = delete;
    SessionWatch& operator=(const SessionWatch&) = delete;
    ~SessionWatch();

    bool isLost() const { return isLost_; }

private:
    void dispatch();
    void reportLost();
    void beginAgain();
    static void handleToolkitMessage(QtMsgType type, const QMessageLogContext& context,
                                     const QString& text);

    SessionEvents events_;
    std::string farewell_;
    std::string lost_;
    std::string desktop_;
    bool comesBack_;
    SystemLog& log_;
    std::function<void()> abandoned_;
    bool isLost_ = false;
    QtMessageHandler toolkitsOwnHandler_;
    QtRunLoop::Watch readable_;
    QtRunLoop::Watch beforeBlocking_;
};

}  // namespace lumatile
