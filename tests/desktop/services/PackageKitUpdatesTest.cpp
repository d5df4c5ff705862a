#include "platform/freedesktop/updates/PackageKitUpdates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/MockService.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {
namespace {

using State = PackageAnswer::State;

constexpr const char* managerXml =
    "<node><interface name='org.freedesktop.PackageKit'>"
    "<method name='CreateTransaction'><arg type='o' direction='out'/></method>"
    "</interface></node>";
constexpr const char* transactionXml =
    "<node><interface name='org.freedesktop.PackageKit.Transaction'>"
    "<method name='SetHints'><arg type='as' direction='in'/></method>"
    "<method name='SearchFiles'><arg type='t' direction='in'/><arg type='as' direction='in'/>"
    "</method>"
    "<method name='GetUpdates'><arg type='t' direction='in'/></method>"
    "<method name='UpdatePackages'><arg type='t' direction='in'/><arg type='as' direction='in'/>"
    "</method></interface></node>";

/// What the service says to one method.
struct Script {
    std::vector<std::string> packages;
    std::string error;      ///< Told before the end; the end is then a failure.
    bool refuses = false;   ///< The call itself fails.
    bool isSilent = false;  ///< The end never comes.
};

/// The package service on a bus of its own.
class PackageKitUpdatesTest : public testing::Test {
protected:
    static constexpr const char* binary = "/usr/bin/lumatile";

    void startService() {
        service = std::make_unique<MockService>(
            session.environment().at("DBUS_SESSION_BUS_ADDRESS"), "org.freedesktop.PackageKit",
            [this](const MockService::Call& call) { handle(call); });
        service->offer("/org/freedesktop/PackageKit", managerXml);
    }

    void handle(const MockService::Call& call) {
        if (call.method == "CreateTransaction") {
            if (refusesTransactions) {
                call.fail("org.freedesktop.DBus.Error.AccessDenied", "not you");
                return;
            }
            const std::string path = '/' + std::to_string(++transactions) + "_abc";
            service->offer(path, transactionXml);
            call.answer(g_variant_new("(o)", path.c_str()));
            return;
        }
        char* text = g_variant_print(call.arguments, FALSE);
        calls.push_back(call.method + text);
        g_free(text);
        const Script& script = scripts[call.method];
        if (script.refuses) {
            call.fail("org.freedesktop.PackageKit.Transaction.Refused", "refused by policy");
            return;
        }
        call.answer(nullptr);
        if (call.method != "SetHints" && !script.isSilent) {
            finish(call.path, script);
        }
    }

    void finish(const std::string& path, const Script& script) {
        constexpr const char* interface = "org.freedesktop.PackageKit.Transaction";
        for (const std::string& id : script.packages) {
            service->emit(path, interface, "Package",
                          g_variant_new("(uss)", 1U, id.c_str(), "Windows in their places"));
        }
        if (!script.error.empty()) {
            service->emit(path, interface, "ErrorCode",
                          g_variant_new("(us)", 2U, script.error.c_str()));
        }
        service->emit(path, interface, "Finished",
                      g_variant_new("(uu)", script.error.empty() ? 1U : 2U, 10U));
    }

    PackageAnswer ask(PackageKitUpdates& of) {
        std::optional<PackageAnswer> answer;
        int told = 0;
        of.ask([&](const PackageAnswer& given) {
            answer = given;
            ++told;
        });
        EXPECT_TRUE(runUntil([&] { return answer.has_value(); }));
        runReady();
        EXPECT_EQ(told, 1);
        return answer.value_or(PackageAnswer());
    }
    PackageAnswer ask() { return ask(updates); }

    PrivateSession session{":none"};
    std::unique_ptr<MockService> service;
    std::map<std::string, Script> scripts;
    std::vector<std::string> calls;
    int transactions = 0;
    bool refusesTransactions = false;
    BusConnection bus{session.environment().at("DBUS_SESSION_BUS_ADDRESS")};
    PackageKitUpdates updates{bus, binary};
};

const std::string installed = "lumatile;0.1.0-1;amd64;installed:debian";

TEST_F(PackageKitUpdatesTest, asksForItsOwnFileAmongWhatIsInstalled) {
    startService();
    ask();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0], "SetHints(['background=true', 'interactive=false'],)");
    EXPECT_EQ(calls[1], "SearchFiles(4, ['/usr/bin/lumatile'])");
}

TEST_F(PackageKitUpdatesTest, aProgramOfNoPackageHasNone) {
    startService();
    EXPECT_EQ(ask(), (PackageAnswer{State::noPackage, "", ""}));
}

TEST_F(PackageKitUpdatesTest, aNewerVersionOfItsPackageIsTold) {
    startService();
    scripts["SearchFiles"].packages = {installed};
    scripts["GetUpdates"].packages = {"firefox;2.0;amd64;stable", "lumatile;0.2.0-1;amd64;stable",
                                      "lumatile-data;0.3.0-1;amd64;stable"};
    EXPECT_EQ(ask(), (PackageAnswer{State::updateAvailable, "0.2.0-1", ""}));
}

TEST_F(PackageKitUpdatesTest, withoutANewerVersionItIsUpToDate) {
    startService();
    scripts["SearchFiles"].packages = {installed};
    // Another architecture's, the same version, and other packages.
    scripts["GetUpdates"].packages = {"lumatile;0.2.0-1;i386;stable",
                                      "lumatile;0.1.0-1;amd64;stable", "firefox;2;amd64;stable"};
    EXPECT_EQ(ask(), (PackageAnswer{State::upToDate, "", ""}));
}

TEST_F(PackageKitUpdatesTest, askedAgainItAnswersAgain) {
    startService();
    scripts["SearchFiles"].packages = {installed};
    EXPECT_EQ(ask().state, State::upToDate);
    scripts["GetUpdates"].packages = {"lumatile;0.2.0-1;amd64;stable"};
    EXPECT_EQ(ask().state, State::updateAvailable);
}

TEST_F(PackageKitUpdatesTest, withoutTheServiceThereIsNone) {
    EXPECT_EQ(ask().state, State::noService);
}

TEST_F(PackageKitUpdatesTest, withoutABusThereIsNoService) {
    BusConnection none{""};
    PackageKitUpdates without(none, binary);
    EXPECT_EQ(ask(without).state, State::noService);
    BusConnection gone{"unix:path=/no/such/socket"};
    PackageKitUpdates unreachable(gone, binary);
    EXPECT_EQ(ask(unreachable).state, State::noService);
}

TEST_F(PackageKitUpdatesTest, aServiceThatComesLaterIsFound) {
    EXPECT_EQ(ask().state, State::noService);
    startService();
    EXPECT_EQ(ask().state, State::noPackage);
}

TEST_F(PackageKitUpdatesTest, whatTheServiceSaysOfAFailureIsTold) {
    startService();
    scripts["SearchFiles"].error = "the lists are locked";
    EXPECT_EQ(ask(), (PackageAnswer{State::failed, "", "the lists are locked"}));
    scripts["SearchFiles"] = {{installed}, "", false, false};
    scripts["GetUpdates"].error = "no network";
    EXPECT_EQ(ask(), (PackageAnswer{State::failed, "", "no network"}));
}

TEST_F(PackageKitUpdatesTest, aRefusedCallIsAFailure) {
    startService();
    scripts["SearchFiles"].refuses = true;
    EXPECT_EQ(ask(), (PackageAnswer{State::failed, "", "refused by policy"}));
    refusesTransactions = true;
    EXPECT_EQ(ask(), (PackageAnswer{State::failed, "", "not you"}));
}

TEST_F(PackageKitUpdatesTest, aServiceThatNeverEndsIsGivenUp) {
    startService();
    scripts["SearchFiles"].isSilent = true;
    PackageKitUpdates impatient(bus, binary, 1);
    EXPECT_EQ(ask(impatient).state, State::failed);
}

TEST_F(PackageKitUpdatesTest, packagesWithoutAVersionThatCanBeShownDoNotCount) {
    startService();
    scripts["SearchFiles"].packages = {installed};
    scripts["GetUpdates"].packages = {"lumatile;;amd64;stable",
                                      "lumatile;<b>1</b>;amd64;stable",
                                      "lumatile;1\n2;amd64;stable",
                                      "lumatile;" + std::string(129, '1') + ";amd64;stable",
                                      "lumatile",
                                      "lumatile;1;amd64",
                                      "lumatile;1;amd64;stable;more",
                                      ";1;amd64;stable",
                                      "lumatile;2;amd64;" + std::string(2000, 'x')};
    EXPECT_EQ(ask().state, State::upToDate);
}

TEST_F(PackageKitUpdatesTest, aNewQuestionReplacesTheOneBefore) {
    startService();
    scripts["SearchFiles"].isSilent = true;
    int first = 0;
    updates.ask([&](const PackageAnswer&) { ++first; });
    ASSERT_TRUE(runUntil([&] { return calls.size() == 2; }));
    scripts["SearchFiles"].isSilent = false;
    EXPECT_EQ(ask().state, State::noPackage);
    EXPECT_EQ(first, 0);
}

TEST_F(PackageKitUpdatesTest, anAnswerAfterItsEndIsDropped) {
    startService();
    int told = 0;
    auto gone = std::make_unique<PackageKitUpdates>(bus, binary);
    gone->ask([&](const PackageAnswer&) { ++told; });
    gone.reset();
    // The same bus answers another question after that one.
    ask();
    EXPECT_EQ(told, 0);
}

TEST_F(PackageKitUpdatesTest, theServiceInstallsWhatItToldOf) {
    startService();
    scripts["SearchFiles"].packages = {installed};
    scripts["GetUpdates"].packages = {"lumatile;0.2.0-1;amd64;stable"};
    ask();
    calls.clear();
    std::optional<std::optional<std::string>> result;
    updates.install([&](const std::optional<std::string>& error) { result = error; });
    ASSERT_TRUE(runUntil([&] { return result.has_value(); }));
    EXPECT_EQ(*result, std::nullopt);
    EXPECT_THAT(calls,
                testing::ElementsAre("SetHints(['interactive=true'],)",
                                     "UpdatePackages(2, ['lumatile;0.2.0-1;amd64;stable'])"));

    scripts["UpdatePackages"].error = "not authorized";
    result.reset();
    updates.install([&](const std::optional<std::string>& error) { result = error; });
    ASSERT_TRUE(runUntil([&] { return result.has_value(); }));
    EXPECT_EQ(*result, "not authorized");
}

TEST_F(PackageKitUpdatesTest, withoutAnUpdateKnownNothingIsInstalled) {
    startService();
    std::optional<std::optional<std::string>> result;
    updates.install([&](const std::optional<std::string>& error) { result = error; });
    ASSERT_TRUE(runUntil([&] { return result.has_value(); }));
    EXPECT_EQ(*result, "no update is known");
    EXPECT_THAT(calls, testing::IsEmpty());
}

TEST_F(PackageKitUpdatesTest, withoutASoftwareCentreNoneIsOpened) {
    EXPECT_FALSE(updates.canOpenSoftwareCentre());
    EXPECT_FALSE(updates.openSoftwareCentre());
}

}  // namespace
}  // namespace lumatile::desktop
