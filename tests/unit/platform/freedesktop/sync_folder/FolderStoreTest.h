#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"
#include "tests/support/StoringComputer.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile {

class FolderStoreTest : public testing::Test {
protected:
    using Condition = SharedStoreStatus::Condition;

    TemporaryFolder folder;
    std::filesystem::path file = folder / SyncFolderVisit::fileName;
    std::filesystem::path aside = folder / SyncFolderVisit::asideName;
    StoringComputer computer;
};

using SharedFolderStoreTest = FolderStoreTest;

/// For its lifetime this process has the rights of a user who owns nothing. Without effect for
/// others than the superuser, who have no rights to give up.
class NobodysRights {
public:
    NobodysRights() {
        constexpr uid_t nobody = 65534;
        if (geteuid() == 0 && seteuid(nobody) != 0) {
            throw std::runtime_error("seteuid");
        }
    }
    NobodysRights(const NobodysRights&) = delete;
    NobodysRights& operator=(const NobodysRights&) = delete;
    ~NobodysRights() {
        if (getuid() == 0 && seteuid(0) != 0) {
            std::abort();
        }
    }
};

}  // namespace lumatile
