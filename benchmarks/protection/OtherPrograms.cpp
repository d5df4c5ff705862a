#include "benchmarks/protection/OtherPrograms.h"

#include <string>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::benchmark {

std::vector<desktop::ChildProcess> startPrograms(desktop::TestDesktop& desktop, std::size_t count) {
    std::vector<desktop::ChildProcess> programs;
    for (std::size_t number = 0; number < count; ++number) {
        programs.push_back(desktop.session().start({"xlogo"}, "program" + std::to_string(number)));
    }
    desktop::DesktopObserver& observer = desktop.observer();
    if (!desktop::XClient::waitUntil([&] {
            return observer.cardinals(observer.root(), "_NET_CLIENT_LIST").size() == count;
        })) {
        throw desktop::DesktopError("the programs show no windows");
    }
    return programs;
}

}  // namespace lumatile::benchmark
