#include <cmath>
#include <cstdint>
#include <string>

#include "oled_protection/OLEDSettings.h"
#include "oled_protection/OLEDSettingsCodec.h"
#include "oled_protection/OLEDStatus.h"
#include "oled_protection/OrbitScheduler.h"
#include "tests/fuzz/FuzzInput.h"

namespace lumatile {
namespace {

// A moment in 2026, in seconds.
constexpr double now = 1'780'000'000;

void use(const OLEDSettings& settings, bool exaggerated) {
    const OrbitConfig orbit = settings.orbitConfig(exaggerated);
    fuzzRequire(orbit.radiusPx >= 1 && orbit.radiusPx <= OrbitConfig::maximumRadiusPx,
                "the radius is one that a path can be made of");
    fuzzRequire(!OrbitScheduler::makePath(orbit.radiusPx, orbit.stridePx).empty(),
                "an orbit has a path");
    fuzzRequire(settings.orbitInterval(exaggerated) >= 1, "an orbit steps once a second at most");

    const JitterPolicy jitter = settings.jitterPolicy(exaggerated);
    const Offset offset = jitter.offset(now);
    const Rect area{0, 0, 1920, 1080};
    const Rect adjusted = jitter.adjust(Rect{960, 0, 960, 1080}, area, now);
    fuzzRequire(std::isfinite(adjusted.x) && std::isfinite(adjusted.y) && adjusted.width > 0 &&
                    adjusted.height > 0,
                "a shifted window is one that can be placed");

    OLEDSettings::orbitStepIntervalLabel(settings.orbitStepInterval);
    OLEDStatus::edgeJitterLine(settings.jitterEnabled, offset.dx, offset.dy);
    OLEDStatus::idleDimLine(settings.idleDimEnabled, settings.idleDimStrength,
                            settings.idleThreshold);
}

}  // namespace
}  // namespace lumatile

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace lumatile;
    const auto settings = OLEDSettingsCodec::decode(fuzzInput(data, size));
    if (settings) {
        fuzzRequire(OLEDSettingsCodec::decode(OLEDSettingsCodec::encode(*settings)) == settings,
                    "what is written is read back");
        use(*settings, false);
        use(*settings, true);
    }
    return 0;
}
