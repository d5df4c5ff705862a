#include "benchmarks/desktop/OpenboxBinding.h"

#include <filesystem>
#include <fstream>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::benchmark {

void bindLeftHalf(const desktop::PrivateSession& session, desktop::DesktopObserver& observer,
                  const std::string& keys) {
    const std::filesystem::path file = session.configuration() / "openbox" / "rc.xml";
    std::string settings = readFile(file);
    const std::size_t place = settings.find("</keyboard>");
    if (place == std::string::npos) {
        throw desktop::DesktopError("openbox has no key bindings in " + file.string());
    }
    settings.insert(place, "<keybind key=\"" + keys +
                               "\"><action name=\"MoveResizeTo\"><x>0</x><y>0</y>"
                               "<width>50%</width><height>100%</height></action></keybind>\n");
    std::ofstream stream(file, std::ios::binary);
    stream << settings;
    stream.close();
    if (!stream) {
        throw desktop::DesktopError("cannot write " + file.string());
    }
    // "Read your settings again", in openbox's own protocol.
    observer.ask(observer.root(), "_OB_CONTROL", {1, 0, 0, 0, 0});
}

}  // namespace lumatile::benchmark
