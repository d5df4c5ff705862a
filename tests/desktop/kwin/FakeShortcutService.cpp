#include "tests/desktop/kwin/FakeShortcutService.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <utility>

#include "tests/support/TemporaryFolder.h"

namespace lumatile::desktop {
namespace {

constexpr const char* scripting = R"(<node><interface name="org.kde.kwin.Scripting">
  <method name="loadScript"><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="i" direction="out"/></method>
  <method name="unloadScript"><arg type="s" direction="in"/><arg type="b" direction="out"/></method>
  <method name="start"/>
</interface></node>)";

constexpr const char* shortcuts = R"xml(<node><interface name="org.kde.KGlobalAccel">
  <method name="globalShortcutsByKey"><arg type="(ai)" direction="in"/>
    <arg type="(i)" direction="in"/><arg type="a(ssssssaiai)" direction="out"/></method>
  <method name="globalShortcutAvailable"><arg type="(ai)" direction="in"/>
    <arg type="s" direction="in"/><arg type="b" direction="out"/></method>
  <method name="doRegister"><arg type="as" direction="in"/></method>
  <method name="setShortcutKeys"><arg type="as" direction="in"/><arg type="a(ai)" direction="in"/>
    <arg type="u" direction="in"/><arg type="a(ai)" direction="out"/></method>
  <method name="unregister"><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="b" direction="out"/></method>
</interface></node>)xml";

constexpr const char* nothing = R"([{"event":"all","active":null,"windows":[],"screens":[],)"
                                R"("borders":{"tiling":true,"maximize":true}}])";

constexpr const char* component = "lumatile";

GVariant* sequence(std::int32_t key) {
    GVariantBuilder keys;
    g_variant_builder_init(&keys, G_VARIANT_TYPE("ai"));
    for (const std::int32_t each : {key, 0, 0, 0}) {
        g_variant_builder_add(&keys, "i", each);
    }
    return g_variant_new("(ai)", &keys);
}

GVariant* sequences(std::int32_t key) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a(ai)"));
    if (key != 0) {
        g_variant_builder_add_value(&list, sequence(key));
    }
    return g_variant_builder_end(&list);
}

std::int32_t firstOf(GVariant* sequence) {
    gint32 key = 0;
    const GVariantHandle keys(g_variant_get_child_value(sequence, 0));
    g_variant_get_child(keys.get(), 0, "i", &key);
    return key;
}

std::vector<std::string> wordsOf(GVariant* list) {
    std::vector<std::string> words;
    for (gsize index = 0; index < g_variant_n_children(list); ++index) {
        const char* word = nullptr;
        g_variant_get_child(list, index, "&s", &word);
        words.emplace_back(word);
    }
    return words;
}

std::string pathOf(const std::string& program, const std::string& name) {
    return program + "/" + name;
}

}  // namespace

FakeShortcutService::FakeShortcutService(const std::string& address, bool takesScripts)
    : takesScripts_(takesScripts) {
    std::promise<void> isReady;
    thread_ = std::thread([this, &address, &isReady] {
        g_main_context_push_thread_default(context_.get());
        {
            MockService service(address, "org.kde.KWin",
                                [this](const MockService::Call& call) { handle(call); });
            service_ = &service;
            service.offer("/Scripting", scripting);
            service.offer("/kglobalaccel", shortcuts);
            g_dbus_connection_call_sync(service.connection(), "org.freedesktop.DBus",
                                        "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                        "RequestName",
                                        g_variant_new("(su)", "org.kde.kglobalaccel", 0), nullptr,
                                        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
            isReady.set_value();
            while (!isOver_) {
                g_main_context_iteration(context_.get(), TRUE);
            }
            for (const MockService::Call& call : std::exchange(waiting_, {})) {
                g_variant_unref(call.arguments);
                call.fail("org.freedesktop.DBus.Error.Disconnected", "it is over");
            }
        }
        while (g_main_context_iteration(context_.get(), FALSE) != 0) {
        }
        g_main_context_pop_thread_default(context_.get());
    });
    isReady.get_future().wait();
}

FakeShortcutService::~FakeShortcutService() {
    runInside([this] { isOver_ = true; });
    thread_.join();
}

/// Runs `work` in the thread, and returns when it has run.
void FakeShortcutService::runInside(std::function<void()> work) {
    std::promise<void> isDone;
    struct Work {
        std::function<void()> run;
        std::promise<void>& isDone;
    };
    g_main_context_invoke_full(
        context_.get(), G_PRIORITY_DEFAULT,
        [](gpointer data) -> gboolean {
            auto* const posted = static_cast<Work*>(data);
            posted->run();
            posted->isDone.set_value();
            return G_SOURCE_REMOVE;
        },
        new Work{std::move(work), isDone}, [](gpointer data) { delete static_cast<Work*>(data); });
    isDone.get_future().wait();
}

void FakeShortcutService::setSilent(bool isSilent) {
    runInside([this, isSilent] {
        isSilent_ = isSilent;
        for (const MockService::Call& call :
             isSilent ? std::vector<MockService::Call>() : std::exchange(waiting_, {})) {
            answer(call);
        }
    });
}

void FakeShortcutService::setFailing(bool isFailing) {
    runInside([this, isFailing] { isFailing_ = isFailing; });
}

void FakeShortcutService::give(const std::string& program, const std::string& name,
                               const Action& action) {
    const std::lock_guard guard(lock_);
    actions_[pathOf(program, name)] = action;
}

void FakeShortcutService::takeAway(const std::string& program, const std::string& name) {
    const std::lock_guard guard(lock_);
    actions_.erase(pathOf(program, name));
}

void FakeShortcutService::change(const std::string& program, const std::string& name,
                                 std::int32_t key) {
    runInside([&] {
        const std::lock_guard guard(lock_);
        Action& action = actions_[pathOf(program, name)];
        action.key = key;
        const char* const id[] = {program.c_str(), name.c_str(), action.programName.c_str(),
                                  action.title.c_str()};
        service_->emit("/kglobalaccel", "org.kde.KGlobalAccel", "yourShortcutsChanged",
                       g_variant_new("(@as@a(ai))", g_variant_new_strv(id, 4), sequences(key)));
    });
}

void FakeShortcutService::press(const std::string& name) {
    runInside([&] {
        service_->emit("/component/lumatile", "org.kde.kglobalaccel.Component",
                       "globalShortcutPressed",
                       g_variant_new("(ssx)", component, name.c_str(), gint64{0}));
    });
}

FakeShortcutService::Actions FakeShortcutService::actions() {
    const std::lock_guard guard(lock_);
    return actions_;
}

std::int32_t FakeShortcutService::keyOf(const std::string& name) {
    const std::lock_guard guard(lock_);
    const auto found = actions_.find(pathOf(component, name));
    return found == actions_.end() ? 0 : found->second.key;
}

std::vector<std::string> FakeShortcutService::asked() {
    const std::lock_guard guard(lock_);
    return asked_;
}

void FakeShortcutService::forget() {
    const std::lock_guard guard(lock_);
    asked_.clear();
}

bool FakeShortcutService::waitUntilAsked(std::size_t count) {
    constexpr std::chrono::seconds patience(20);
    std::unique_lock guard(lock_);
    return wasAsked_.wait_for(guard, patience, [&] { return asked_.size() >= count; });
}

void FakeShortcutService::handle(const MockService::Call& call) {
    if (call.path == "/Scripting") {
        handleScript(call);
        return;
    }
    {
        const std::lock_guard guard(lock_);
        asked_.push_back(call.method);
    }
    wasAsked_.notify_all();
    if (isFailing_) {
        call.fail("org.freedesktop.DBus.Error.ServiceUnknown", "there is no such service");
        return;
    }
    g_variant_ref(call.arguments);  // Given back with the answer.
    if (isSilent_) {
        waiting_.push_back(call);
    } else {
        answer(call);
    }
}

void FakeShortcutService::handleScript(const MockService::Call& call) {
    if (call.method == "loadScript") {
        const char* file = nullptr;
        g_variant_get(call.arguments, "(&s&s)", &file, nullptr);
        const std::string text = readFile(file);
        const auto valueOf = [&text](const std::string& key) {
            const auto place = text.find(key + ": \"") + key.size() + 3;
            return text.substr(place, text.find('"', place) - place);
        };
        program_ = valueOf("service");
        object_ = valueOf("path");
        call.answer(g_variant_new("(i)", takesScripts_ ? 0 : -1));
    } else if (call.method == "unloadScript") {
        call.answer(g_variant_new("(b)", FALSE));
    } else {
        call.answer(nullptr);
        askProgram(nothing);
    }
}

/// Asks the program for orders again and again, as its script does.
void FakeShortcutService::askProgram(const char* text) {
    g_dbus_connection_call(
        service_->connection(), program_.c_str(), object_.c_str(), "org.lumatile.KWinScript",
        "Next", g_variant_new("(s)", text), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer self) {
            const GVariantHandle reply(
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
            auto& service = *static_cast<FakeShortcutService*>(self);
            if (reply && !service.isOver_) {
                service.askProgram("[]");
            }
        },
        this);
}

void FakeShortcutService::answer(const MockService::Call& call) {
    const GVariantHandle arguments(call.arguments);
    const std::lock_guard guard(lock_);
    if (call.method == "doRegister") {
        const GVariantHandle id(g_variant_get_child_value(arguments.get(), 0));
        const std::vector<std::string> words = wordsOf(id.get());
        Action& action = actions_[pathOf(words.at(0), words.at(1))];
        action.programName = words.at(2);
        action.title = words.at(3);
        call.answer(nullptr);
        return;
    }
    if (call.method == "unregister") {
        const char* program = nullptr;
        const char* name = nullptr;
        g_variant_get(arguments.get(), "(&s&s)", &program, &name);
        call.answer(g_variant_new("(b)", actions_.erase(pathOf(program, name)) != 0));
        return;
    }
    const auto holderOf = [this](std::int32_t key) {
        return std::find_if(actions_.begin(), actions_.end(),
                            [key](const auto& each) { return each.second.key == key; });
    };
    if (call.method == "setShortcutKeys") {
        const GVariantHandle id(g_variant_get_child_value(arguments.get(), 0));
        const GVariantHandle list(g_variant_get_child_value(arguments.get(), 1));
        const GVariantHandle first(g_variant_get_child_value(list.get(), 0));
        const std::int32_t key = firstOf(first.get());
        const std::vector<std::string> words = wordsOf(id.get());
        const std::string path = pathOf(words.at(0), words.at(1));
        const auto holder = holderOf(key);
        const bool isFree = holder == actions_.end() || holder->first == path;
        actions_[path].key = isFree ? key : 0;
        call.answer(g_variant_new("(@a(ai))", sequences(isFree ? key : 0)));
        return;
    }
    const GVariantHandle asked(g_variant_get_child_value(arguments.get(), 0));
    const auto holder = holderOf(firstOf(asked.get()));
    if (call.method == "globalShortcutAvailable") {
        call.answer(g_variant_new("(b)", holder == actions_.end()));
        return;
    }
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a(ssssssaiai)"));
    if (holder != actions_.end()) {
        const std::string& path = holder->first;
        const auto slash = path.find('/');
        const Action& action = holder->second;
        GVariantBuilder keys;
        g_variant_builder_init(&keys, G_VARIANT_TYPE("ai"));
        g_variant_builder_add(&keys, "i", action.key);
        GVariantBuilder none;
        g_variant_builder_init(&none, G_VARIANT_TYPE("ai"));
        g_variant_builder_add(&list, "(ssssssaiai)", path.substr(slash + 1).c_str(),
                              action.title.c_str(), path.substr(0, slash).c_str(),
                              action.programName.c_str(), "default", "Default Context", &keys,
                              &none);
    }
    call.answer(g_variant_new("(a(ssssssaiai))", &list));
}

}  // namespace lumatile::desktop
