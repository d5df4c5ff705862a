// Looks at KWin's windows for the tests and does to them what a user would. It tells every change
// over the bus, and carries out an order each time its shortcut is invoked.

const service = "org.lumatile.test.Probe";
const path = "/probe";

// Which windows are maximized can be heard but not asked.
const maximized = {};
const known = {};

function facts(window) {
    const id = window.internalId.toString();
    const state = maximized[id] || [false, false];
    const frame = window.frameGeometry;
    return {
        id: id,
        pid: window.pid,
        xid: window.windowId || 0,
        // Without the number that a second one of the name gets.
        caption: window.caption.replace(/ <\d+>\u200e?$/, ""),
        resourceClass: window.resourceClass.toString(),
        desktopFile: window.desktopFileName.toString(),
        frame: [frame.x, frame.y, frame.width, frame.height],
        minimized: window.minimized,
        maximizedHorizontally: state[0],
        maximizedVertically: state[1],
        fullScreen: window.fullScreen,
        tiled: window.tile !== null && window.tile !== undefined,
        active: window.active,
        moving: window.move,
        resizing: window.resize,
        managed: window.managed,
        shaded: Boolean(window.shade),
        screen: window.screen,
        desktop: window.desktop
    };
}

function tell(window) {
    callDBus(service, path, service, "Window", JSON.stringify(facts(window)));
}

function watch(window) {
    const id = window.internalId.toString();
    // A window that KWin takes apart still says that it leaves its tile, and KWin dies when it is
    // looked at then.
    const again = function () {
        if (known[id]) {
            tell(window);
        }
    };
    known[id] = true;
    for (const name of ["frameGeometryChanged", "minimizedChanged", "fullScreenChanged",
                        "captionChanged", "activeChanged", "screenChanged", "tileChanged",
                        "desktopFileNameChanged", "moveResizedChanged", "shadeChanged",
                        "desktopChanged"]) {
        if (window[name]) {
            window[name].connect(again);
        }
    }
    tell(window);
}

function find(id) {
    for (const window of workspace.clientList()) {
        if (window.internalId.toString() === id) {
            return window;
        }
    }
    return null;
}

workspace.clientAdded.connect(watch);
workspace.clientRemoved.connect(function (window) {
    const id = window.internalId.toString();
    delete known[id];
    delete maximized[id];
    callDBus(service, path, service, "Gone", id);
});
workspace.clientMaximizeSet.connect(function (window, horizontally, vertically) {
    maximized[window.internalId.toString()] = [horizontally, vertically];
    tell(window);
});
for (const window of workspace.clientList()) {
    watch(window);
}

function rectangle(rect) {
    return [rect.x, rect.y, rect.width, rect.height];
}

const actions = {
    sync: function () { return true; },
    activate: function (order) { workspace.activeClient = find(order.id); return true; },
    place: function (order) {
        const window = find(order.id);
        // As a window that is dragged out of its tile.
        if (window.tile) {
            window.tile = null;
        }
        window.frameGeometry = {
            x: order.frame[0], y: order.frame[1], width: order.frame[2], height: order.frame[3]
        };
        return true;
    },
    maximize: function (order) {
        find(order.id).setMaximize(order.vertically, order.horizontally);
        return true;
    },
    minimize: function (order) { find(order.id).minimized = order.on; return true; },
    fullScreen: function (order) { find(order.id).fullScreen = order.on; return true; },
    keepAbove: function (order) { find(order.id).keepAbove = order.on; return true; },
    shade: function (order) { find(order.id).shade = order.on; return true; },
    desktop: function (order) { find(order.id).desktop = order.number; return true; },
    addDesktop: function () { workspace.createDesktop(1, "second"); return true; },
    desk: function () {
        const windows = Array.from(workspace.clientList());
        windows.sort((first, second) => first.stackingOrder - second.stackingOrder);
        const active = workspace.activeClient;
        return {
            stacking: windows.map((window) => window.internalId.toString()),
            active: active ? active.internalId.toString() : null,
            desktop: workspace.currentDesktop
        };
    },
    close: function (order) { find(order.id).closeWindow(); return true; },
    shortcut: function (order) { workspace[order.slot](); return true; },
    screens: function () {
        const result = [];
        for (let index = 0; index < workspace.numScreens; ++index) {
            result.push({
                whole: rectangle(workspace.clientArea(KWin.ScreenArea, index,
                                                      workspace.currentDesktop)),
                usable: rectangle(workspace.clientArea(KWin.MaximizeArea, index,
                                                       workspace.currentDesktop))
            });
        }
        return result;
    },
    pointer: function () { return [workspace.cursorPos.x, workspace.cursorPos.y]; }
};

registerShortcut("Lumatile Test Probe", "Order of a test", "", function () {
    callDBus(service, path, service, "Next", function (text) {
        const order = JSON.parse(text);
        let answer = { serial: order.serial };
        try {
            answer.result = actions[order.action](order);
        } catch (error) {
            answer.error = error.toString();
        }
        callDBus(service, path, service, "Done", JSON.stringify(answer));
    });
});

callDBus(service, path, service, "Loaded", "");
