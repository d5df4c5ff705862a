#include "platform/qt/QtRunLoop.h"

#include <QAbstractEventDispatcher>
#include <QMetaObject>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

namespace lumatile {

namespace {

class QtRunLoopTimer final : public RunLoopTimer {
public:
    QtRunLoopTimer(int milliseconds, std::function<void()> tick) {
        timer_.setTimerType(Qt::CoarseTimer);
        QObject::connect(&timer_, &QTimer::timeout, std::move(tick));
        timer_.start(milliseconds);
    }

private:
    QTimer timer_;
};

int wholeMilliseconds(double seconds) {
    constexpr double perSecond = 1000;
    const double milliseconds = std::round(seconds * perSecond);
    // A timer of zero would never let the loop rest. What is not a number fails the comparison.
    if (!(milliseconds >= 1)) {
        return 1;
    }
    return static_cast<int>(
        std::min(milliseconds, static_cast<double>(std::numeric_limits<int>::max())));
}

}  // namespace

double QtRunLoop::now() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

std::unique_ptr<RunLoopTimer> QtRunLoop::repeat(double seconds, std::function<void()> tick) {
    return std::make_unique<QtRunLoopTimer>(wholeMilliseconds(seconds), std::move(tick));
}

void QtRunLoop::post(std::function<void()> work) {
    QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection);
}

QtRunLoop::Watch QtRunLoop::watchDescriptor(int descriptor, std::function<void()> readable) {
    if (descriptor < 0) {
        return std::make_unique<QObject>();
    }
    auto notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [readable = std::move(readable)] { readable(); });
    return notifier;
}

QtRunLoop::Watch QtRunLoop::beforeBlocking(std::function<void()> work) {
    auto context = std::make_unique<QObject>();
    if (QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance()) {
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, context.get(),
                         std::move(work));
    }
    return context;
}

}  // namespace lumatile
