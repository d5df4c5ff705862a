#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/unit/Lumatile/SyncedComputer.h"

namespace lumatile {
namespace {

using Values = std::pair<Bytes, Bytes>;
using Version = std::pair<double, Values>;

/// Some computers on which users change settings at random, with clocks that differ, and a folder
/// that is late, forgetful and out of order.
struct Fleet {
    explicit Fleet(std::size_t count) {
        sharedFolder.setRoute([this] {
            if (isCalm) {
                return SimulatedSharedFolder::Passage{};
            }
            // A generator of one's own: how many ways there are depends on what happens.
            return SimulatedSharedFolder::Passage{static_cast<double>(random(8)), random(5) == 0,
                                                  random(5) != 0};
        });
        for (std::size_t index = 0; index < count; ++index) {
            // Some whole seconds apart, so that two changes of one time do occur.
            const double clockError = static_cast<double>(random(9)) - 4 +
                                      (random(4) == 0 ? 0 : 0.001 * static_cast<double>(index));
            computers.push_back(
                std::make_unique<SyncedComputer>(sharedFolder.join(), runLoop, clockError));
            computers.back()->sync->start();
        }
        whole.insert({0, {"", ""}});
    }

    unsigned random(unsigned below) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<unsigned>(state >> 33U) % below;
    }

    void step() {
        SyncedComputer& computer = *computers[*rc::gen::inRange<std::size_t>(0, computers.size())];
        const std::string key = *rc::gen::element<std::string>("commands", "oledSettings");
        if (*rc::gen::inRange(0, 8) != 0) {
            runLoop.advance(0.05);
        }
        switch (*rc::gen::inRange(0, 12)) {
            case 0:
            case 1:
            case 2:
            case 3: {
                const Version before = version(computer);
                computer.edit(key, "v" + std::to_string(++edits));
                note(computer, {before});
                break;
            }
            case 4: {
                const Version before = version(computer);
                computer.editAndEnd(key, "v" + std::to_string(++edits));
                note(computer, {before});
                break;
            }
            case 5:
                computer.restart();
                break;
            case 6:
                computer.store.setOnline(*rc::gen::arbitrary<bool>());
                break;
            case 7:
                settle(computer);
                break;
            case 8:
                computer.store.setFull(*rc::gen::arbitrary<bool>());
                break;
            default:
                pass(runLoop, *rc::gen::inRange(0, 5));
                break;
        }
    }

    /// The user chooses, if there is something to choose.
    void settle(SyncedComputer& computer) {
        if (!computer.conflicts.empty()) {
            computer.conflicts.clear();
            // What is not chosen has been looked at.
            const std::vector<Version> both{version(computer), seenByTheStore(computer)};
            computer.sync->settleConflict(*rc::gen::arbitrary<bool>());
            note(computer, both);
        }
    }

    static Version version(SyncedComputer& computer) {
        return {computer.time("__ts"), computer.values()};
    }

    static Version versionOf(const SharedSet& set) { return {changeTime(set), valuesOf(set)}; }

    static Version seenByTheStore(SyncedComputer& computer) {
        SharedSet set;
        for (const char* key : {"__ts", "commands", "oledSettings"}) {
            if (const auto value = computer.store.data(key)) {
                set.insert_or_assign(key, *value);
            }
        }
        return versionOf(set);
    }

    /// What a user had on a computer at the time that it states is a whole set.
    void note(SyncedComputer& computer, const std::vector<Version>& madeOn) {
        whole.insert(version(computer));
        auto& before = origins[version(computer)];
        before.insert(before.end(), madeOn.begin(), madeOn.end());
    }

    /// Every set that a user ever had is what something is made on that is in use or was kept.
    void requireThatNothingIsLost() {
        std::vector<Version> open;
        for (const auto& computer : computers) {
            open.push_back(version(*computer));
        }
        for (const SharedSet& copy : sharedFolder.copies()) {
            open.push_back(versionOf(copy));
        }
        std::set<Version> there{{0, {"", ""}}};
        while (!open.empty()) {
            const Version version = open.back();
            open.pop_back();
            if (there.insert(version).second) {
                open.insert(open.end(), origins[version].begin(), origins[version].end());
            }
        }
        for (const Version& version : whole) {
            RC_ASSERT(there.contains(version));
        }
    }

    static Values valuesOf(const SharedSet& set) {
        const auto value = [&](const char* key) {
            const auto found = set.find(key);
            return found == set.end() ? Bytes() : found->second;
        };
        return {value("commands"), value("oledSettings")};
    }

    void requireWholeSets() {
        for (const auto& computer : computers) {
            RC_ASSERT(whole.contains({computer->time("__ts"), computer->values()}));
            if (const auto& accepted = computer->store.replica().accepted()) {
                RC_ASSERT(whole.contains({changeTime(*accepted), valuesOf(*accepted)}));
            }
        }
        const SharedSet present = sharedFolder.present();
        RC_ASSERT(whole.contains({changeTime(present), valuesOf(present)}));
    }

    /// Edits are over and everything gets through: each computer hears of the folder again, users
    /// answer what they are asked.
    void calmDown() {
        isCalm = true;
        for (const auto& computer : computers) {
            computer->store.setFull(false);
            computer->store.setOnline(true);
        }
        pass(runLoop, 20);  // What is still on its way arrives.
        // A question arises for a change that was cut off, once for each computer at most; after
        // it, one round brings the latest set to the folder and another one to everybody.
        for (std::size_t round = 0; round < 2 * computers.size() + 2; ++round) {
            for (const auto& computer : computers) {
                settle(*computer);
            }
            pass(runLoop, 2);
            sharedFolder.resend();
            pass(runLoop, 2);
            requireWholeSets();
        }
    }

    SimulatedClock clock;
    SimulatedRunLoop runLoop{clock};
    SimulatedSharedFolder sharedFolder{clock, runLoop};
    std::vector<std::unique_ptr<SyncedComputer>> computers;
    std::set<Version> whole;  ///< Every set that a user ever had, with its time.
    std::map<Version, std::vector<Version>> origins;  ///< What each was made on.
    std::uint64_t state = *rc::gen::arbitrary<std::uint64_t>();
    int edits = 0;
    bool isCalm = false;
};

void everythingConverges(std::size_t count) {
    Fleet fleet(count);
    const int steps = *rc::gen::inRange(1, 60);
    for (int step = 0; step < steps; ++step) {
        fleet.step();
        fleet.requireWholeSets();
    }
    fleet.calmDown();
    fleet.requireThatNothingIsLost();

    // Everybody states the same time. Those who have it from each other have the same set; only two
    // users who changed theirs at the very same time keep theirs apart, since equal times mean that
    // there is nothing to copy.
    const double time = fleet.computers.front()->time("__ts");
    std::set<Values> ofThatTime;
    for (const auto& [itsTime, values] : fleet.whole) {
        if (itsTime == time) {
            ofThatTime.insert(values);
        }
    }
    RC_CLASSIFY(ofThatTime.size() > 1, "two changes at the same time");
    RC_ASSERT(changeTime(fleet.sharedFolder.present()) == time);
    for (const auto& computer : fleet.computers) {
        RC_ASSERT(computer->conflicts.empty());
        RC_ASSERT(computer->time("__ts") == time);
        RC_ASSERT(ofThatTime.contains(computer->values()));
        if (ofThatTime.size() == 1) {
            RC_ASSERT(computer->values() == *ofThatTime.begin());
            RC_ASSERT(Fleet::valuesOf(fleet.sharedFolder.present()) == *ofThatTime.begin());
        }
    }
}

RC_GTEST_PROP(SettingsSyncFleet, twoComputersConverge, ()) { everythingConverges(2); }

RC_GTEST_PROP(SettingsSyncFleet, threeComputersConverge, ()) { everythingConverges(3); }

}  // namespace
}  // namespace lumatile
