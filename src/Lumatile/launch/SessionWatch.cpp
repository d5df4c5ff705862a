#include "Lumatile/launch/SessionWatch.h"

#include <QCoreApplication>
#include <QString>

#include <cstdlib>
#include <utility>

#include "Lumatile/MainTexts.h"
#include "Lumatile/launch/SessionReturn.h"
#include "ports/SystemLog.h"

namespace lumatile {

namespace {

// The toolkit's handlers of messages carry nothing of ours.
SessionWatch* watching = nullptr;

}  // namespace

SessionWatch::SessionWatch(SessionEvents events, const SessionFacts& facts, QtRunLoop& runLoop,
                           SystemLog& log, std::function<void()> abandoned)
    : events_(std::move(events)),
      farewell_(facts.toolkitFarewell),
      lost_(facts.lost),
      desktop_(facts.desktop),
      comesBack_(facts.comesBack),
      log_(log),
      abandoned_(std::move(abandoned)),
      readable_(runLoop.watchDescriptor(events_.descriptor, [this] { dispatch(); })),
      beforeBlocking_(runLoop.beforeBlocking([this] { dispatch(); })) {
    watching = this;
    toolkitsOwnHandler_ = qInstallMessageHandler(handleToolkitMessage);
}

SessionWatch::~SessionWatch() {
    qInstallMessageHandler(toolkitsOwnHandler_);
    watching = nullptr;
}

void SessionWatch::dispatch() {
    if (isLost_) {
        return;
    }
    events_.dispatch();
    if (events_.isLost()) {
        reportLost();
        beginAgain();
        QCoreApplication::exit(EXIT_FAILURE);
    }
}

void SessionWatch::reportLost() {
    if (!isLost_) {
        isLost_ = true;
        log_.write(MainTexts::program, lost_);
    }
}

void SessionWatch::beginAgain() {
    if (comesBack_) {
        abandoned_();
        SessionReturn::beginAgain(desktop_);
    }
}

void SessionWatch::handleToolkitMessage(QtMsgType type, const QMessageLogContext& context,
                                        const QString& text) {
    const std::string& farewell = watching->farewell_;
    if (farewell.empty() || !text.startsWith(QString::fromStdString(farewell))) {
        watching->toolkitsOwnHandler_(type, context, text);
        return;
    }
    watching->reportLost();
    if (watching->comesBack_) {
        watching->beginAgain();
    } else {
        watching->abandoned_();
    }
    // As the toolkit would next, but without taking itself apart half way.
    std::_Exit(EXIT_FAILURE);
}

}  // namespace lumatile
