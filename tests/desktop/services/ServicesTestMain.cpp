#include <gtest/gtest.h>

#include <stdlib.h>

#include "tests/support/TemporaryFolder.h"

// The library reads these once, so they are set before anything else happens: settings in memory,
// desktop entries in a folder of this run's own and nowhere else.
int main(int argc, char** argv) {
    const lumatile::TemporaryFolder folder;
    setenv("GSETTINGS_BACKEND", "memory", 1);
    setenv("XDG_DATA_HOME", (folder.path() / "data").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (folder.path() / "config").c_str(), 1);
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    unsetenv("DISPLAY");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
