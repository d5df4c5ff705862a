// What a script finds inside KWin, in the spelling of one of its generations: enough of it for the
// program's script, and a hand that does to it what users and programs do. `generation` is set
// before.

var Signal = class {
    constructor() { this.heard = []; }
    connect(work) { this.heard.push(work); }
    disconnect(work) { this.heard.splice(this.heard.indexOf(work), 1); }
    emit(...values) { this.heard.slice().forEach((work) => work(...values)); }
}

var QTimer = class {
    constructor() {
        this.timeout = new Signal();
        this.singleShot = false;
        this.interval = 0;
        this.active = false;
        QTimer.all.push(this);
    }
    start() { this.active = true; this.due = clock.now + this.interval; }
    stop() { this.active = false; }
}
QTimer.all = [];

var clock = {
    now: 0,
    // Lets time go by; timers run in their order.
    pass(milliseconds) {
        const end = this.now + milliseconds;
        for (;;) {
            const due = QTimer.all.filter((timer) => timer.active && timer.due <= end)
                .sort((first, second) => first.due - second.due)[0];
            if (!due) {
                break;
            }
            this.now = due.due;
            due.active = false;
            due.timeout.emit();
        }
        this.now = end;
    },
};

var KWin = {MaximizeArea: 2, ScreenArea: 5};
var isSix = generation === 6;
var outputs = [{name: "first"}, {name: "second"}];
var areas = [
    {frame: {x: 0, y: 0, width: 1920, height: 1080}, area: {x: 0, y: 0, width: 1920, height: 1040}},
    {frame: {x: 1920, y: 0, width: 1080, height: 1920},
     area: {x: 1920, y: 0, width: 1080, height: 1920}},
];
var nextWindow = 1;

var Window = class {
    constructor(values) {
        const own = {frame: {x: 100, y: 100, width: 400, height: 300}, isMaximized: false, tile: null};
        this.own = own;
        const number = nextWindow++;
        this.internalId = {toString: () => "{window-" + number + "}"};
        Object.assign(this, {
            pid: 4000 + number, desktopFileName: "org.example.Editor", resourceClass: "editor", caption: "",
            normalWindow: true, moveable: true, resizeable: true, maximizable: true, minimized: false,
            fullScreen: false, deleted: false, onAllDesktops: false, stackingOrder: number,
            move: false, resize: false, output: outputs[0],
        });
        this.frameGeometryChanged = new Signal();
        this.minimizedChanged = new Signal();
        this.fullScreenChanged = new Signal();
        this.tileChanged = new Signal();
        this.desktopFileNameChanged = new Signal();
        this.windowClassChanged = new Signal();
        this.hiddenChanged = new Signal();
        if (isSix) {
            this.desktops = [workspace.currentDesktop];
            this.desktopsChanged = new Signal();
            this.maximizedChanged = new Signal();
            this.interactiveMoveResizeStarted = new Signal();
            this.interactiveMoveResizeStepped = new Signal();
            this.interactiveMoveResizeFinished = new Signal();
            Object.defineProperty(this, "maximizeMode", {get: () => own.isMaximized ? 3 : 0});
        } else {
            this.desktop = workspace.currentDesktop;
            this.desktopPresenceChanged = new Signal();
            this.clientMaximizedStateChanged = new Signal();
            this.clientStartUserMovedResized = new Signal();
            this.clientStepUserMovedResized = new Signal();
            this.clientFinishUserMovedResized = new Signal();
        }
        Object.assign(this, values);
    }
    // Its program takes sizes at once, unless it is slow.
    get frameGeometry() { return this.own.frame; }
    set frameGeometry(frame) {
        if (this.isSlow && (frame.width !== this.own.frame.width ||
                            frame.height !== this.own.frame.height)) {
            this.own.asked = frame;
            return;
        }
        this.own.frame = frame;
        this.frameGeometryChanged.emit();
    }
    get tile() { return this.own.tile; }
    set tile(tile) {
        this.own.tile = tile;
        this.tileChanged.emit();
    }
    setMaximize(vertically, horizontally) {
        this.own.isMaximized = vertically || horizontally;
        (isSix ? this.maximizedChanged : this.clientMaximizedStateChanged)
            .emit(this, horizontally, vertically);
    }
}

var options = {
    values: {tiling: true, maximize: true},
    configChanged: new Signal(),
    get electricBorderTiling() { return this.values.tiling; },
    set electricBorderTiling(value) { this.values.tiling = value; },
    get electricBorderMaximize() { return this.values.maximize; },
    set electricBorderMaximize(value) { this.values.maximize = value; },
};

var windows = [];
var workspace = {
    currentDesktop: isSix ? {id: "desktop"} : 1,
    cursorPos: {x: 0, y: 0},
    cursorPosChanged: new Signal(),
    virtualScreenGeometryChanged: new Signal(),
    currentDesktopChanged: new Signal(),
    clientArea(option, screen) {
        if (screen instanceof Window) {
            return areas[0].area;
        }
        const index = isSix ? outputs.indexOf(screen) : screen;
        return option === KWin.ScreenArea ? areas[index].frame : areas[index].area;
    },
};
if (isSix) {
    Object.assign(workspace, {
        windowList: () => windows.slice(), activeWindow: null, screens: outputs.slice(),
        screenOrder: outputs.slice().reverse(), windowAdded: new Signal(),
        windowRemoved: new Signal(), windowActivated: new Signal(), screensChanged: new Signal(),
        screenOrderChanged: new Signal(),
    });
} else {
    Object.assign(workspace, {
        clientList: () => windows.slice(), activeClient: null, numScreens: outputs.length,
        clientAdded: new Signal(), clientRemoved: new Signal(), clientActivated: new Signal(),
        numberScreensChanged: new Signal(),
    });
}

// What the script has said, and the question that it waits for an answer to.
var said = [];
var question = null;
function callDBus(service, path, name, method, text, answered) {
    said.push({to: [service, path, name].join(" "), method: method, events: JSON.parse(text)});
    if (method === "Next") {
        question = answered;
    }
}

var user = {
    opens(values) {
        const window = new Window(values || {});
        windows.push(window);
        (workspace.windowAdded || workspace.clientAdded).emit(window);
        return window;
    },
    closes(window) {
        windows.splice(windows.indexOf(window), 1);
        window.deleted = true;
        (workspace.windowRemoved || workspace.clientRemoved).emit(window);
    },
    focuses(window) {
        workspace[isSix ? "activeWindow" : "activeClient"] = window;
        (workspace.windowActivated || workspace.clientActivated).emit(window);
    },
    grabs(window, isResize) {
        window[isResize ? "resize" : "move"] = true;
        (window.interactiveMoveResizeStarted || window.clientStartUserMovedResized).emit(window);
    },
    drags(window, x, y) {
        workspace.cursorPos = {x: x, y: y};
        const frame = window.frameGeometry;
        window.frameGeometry = {x: x - 10, y: y - 10, width: frame.width, height: frame.height};
        (window.interactiveMoveResizeStepped || window.clientStepUserMovedResized).emit(window);
    },
    // The window is held back.
    pulls(x, y) {
        workspace.cursorPos = {x: x, y: y};
        workspace.cursorPosChanged.emit();
    },
    lets(window) {
        window.move = false;
        window.resize = false;
        (window.interactiveMoveResizeFinished || window.clientFinishUserMovedResized).emit(window);
    },
    changesSettings(values) {
        options.values = values;
        options.configChanged.emit();
    },
    changesDesktop() {
        workspace.currentDesktop = isSix ? {id: "other"} : 2;
        workspace.currentDesktopChanged.emit();
    },
};

function answer(orders) {
    const ask = question;
    question = null;
    ask(JSON.stringify(orders));
}

// All events since the last look.
function heard() {
    const events = [].concat(...said.map((each) => each.events));
    said.length = 0;
    return events;
}

var PEER = {service: ":1.7", path: "/object", name: "interface"};
