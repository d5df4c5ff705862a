#include "oled_protection/OrbitPacer.h"

namespace lumatile {

OrbitPacer::OrbitPacer(double every, bool waits, double pause, double now)
    : interval(every), waitForPause(waits), pauseSeconds(pause), nextDue(now + every) {}

bool OrbitPacer::shouldStep(double now, bool buttonDown, double idleSeconds) {
    if (now < nextDue || buttonDown || (waitForPause && idleSeconds < pauseSeconds)) {
        return false;
    }
    nextDue = now + interval;
    return true;
}

}  // namespace lumatile
