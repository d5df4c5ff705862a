// What runs inside KWin: it reports windows, screens and drags to the program, and carries out what
// the program orders. The program fetches nothing; this script asks it for orders and is answered
// when there are some, or with none after a while. PEER is put before this text when it is loaded:
// the program's name on the bus, the path of its object and the interface.

// 5.27 and 6 give the same things different names; everything below uses these.
const desk = {
    windows() {
        return workspace.windowList ? workspace.windowList() : workspace.clientList();
    },
    active() {
        return workspace.activeWindow !== undefined ? workspace.activeWindow
                                                    : workspace.activeClient;
    },
    activate(window) {
        if (workspace.windowList) {
            workspace.activeWindow = window;
        } else {
            workspace.activeClient = window;
        }
    },
    added: workspace.windowAdded || workspace.clientAdded,
    removed: workspace.windowRemoved || workspace.clientRemoved,
    activated: workspace.windowActivated || workspace.clientActivated,
    // In the order of the user where KWin tells it, else as KWin counts them.
    screens() {
        if (workspace.screenOrder && workspace.screenOrder.length > 0) {
            return Array.from(workspace.screenOrder);
        }
        if (workspace.screens) {
            return Array.from(workspace.screens);
        }
        return Array.from({length: workspace.numScreens}, (_, index) => index);
    },
    isHere(window) {
        if (window.onAllDesktops) {
            return true;
        }
        if (window.desktop !== undefined) {
            return window.desktop === workspace.currentDesktop;
        }
        return Array.from(window.desktops).indexOf(workspace.currentDesktop) >= 0;
    },
    moveBegan(window) {
        return window.interactiveMoveResizeStarted || window.clientStartUserMovedResized;
    },
    moveStepped(window) {
        return window.interactiveMoveResizeStepped || window.clientStepUserMovedResized;
    },
    moveEnded(window) {
        return window.interactiveMoveResizeFinished || window.clientFinishUserMovedResized;
    },
};

const kinds = [
    ["desktopWindow", "desktop"], ["dock", "dock"], ["toolbar", "toolbar"], ["menu", "menu"],
    ["splash", "splash"], ["utility", "utility"], ["dialog", "dialog"],
    ["dropdownMenu", "popup"], ["popupMenu", "popup"], ["tooltip", "popup"],
    ["comboBox", "popup"], ["dndIcon", "popup"], ["popupWindow", "popup"],
    ["appletPopup", "popup"], ["notification", "notification"],
    ["criticalNotification", "notification"], ["onScreenDisplay", "notification"],
];

// Milliseconds. A screen shows no more than 120 pictures a second of a drag.
const shortestStep = 8;
// After a panel or a screen has changed, KWin works out the areas in a later turn.
const areasSettle = 100;
// The program answers within 15 s; one that has not answered for this long is gone.
const longestSilence = 20000;
// A window that is to come in front and has not come by then has been given up.
const longestComing = 3000;

const known = new Map();  // Of windows, by id: the window, the last report as text.
const events = [];        // That the program has not been told yet.
let isBatching = false;
let isAsking = false;
let isOver = false;
let moving = null;  // What the user moves or resizes: id, isResize, start, hasStepped.
let ended = null;   // The same, when it has ended and that has not been told yet.
let screensText = "";
let borders = null;  // What KWin's own snapping is set to while it is held back.
let isEnding = false;
let awaited = null;  // The window that is to come in front as soon as it is there: pid, title.

const areas = timer(areasSettle, tellScreens);
const step = timer(shortestStep, tellStep);
const settled = timer(0, tellEnd);
const silence = timer(longestSilence, fallSilent);
const coming = timer(longestComing, () => { awaited = null; });

function idOf(window) {
    return window.internalId.toString();
}

function rectOf(rect) {
    return {x: rect.x, y: rect.y, width: rect.width, height: rect.height};
}

function pointOf(point) {
    return {x: point.x, y: point.y};
}

function kindOf(window) {
    for (const [property, kind] of kinds) {
        if (window[property]) {
            return kind;
        }
    }
    // Programs of Wayland only say which window one belongs to.
    if (window.normalWindow && window.transient && !window.windowId) {
        return "dialog";
    }
    // A layer surface may call itself what it likes; no user can move one.
    return window.normalWindow && (window.moveable || window.fullScreen) ? "normal" : "other";
}

function areaFor(window) {
    return workspace.clientArea(KWin.MaximizeArea, window);
}

function isSame(first, second) {
    return first.x === second.x && first.y === second.y && first.width === second.width &&
        first.height === second.height;
}

function isMaximized(window) {
    if (window.maximizeMode !== undefined) {
        return window.maximizeMode !== 0;
    }
    const entry = known.get(idOf(window));
    if (entry !== undefined && entry.isMaximized !== undefined) {
        return entry.isMaximized;
    }
    // 5.27 tells of changes alone. One that was maximized before this script came fills its area.
    return window.maximizable && isSame(window.frameGeometry, areaFor(window));
}

function recordOf(window) {
    return {
        id: idOf(window),
        pid: window.pid,
        application: String(window.desktopFileName || ""),
        class: String(window.resourceClass || ""),
        kind: kindOf(window),
        frame: rectOf(window.frameGeometry),
        isMinimized: Boolean(window.minimized),
        isFullScreen: Boolean(window.fullScreen),
        isMaximized: isMaximized(window),
        isTiled: Boolean(window.tile),
        isElsewhere: !desk.isHere(window),
        isShaded: Boolean(window.shade),
        isMovable: Boolean(window.moveable),
        isResizable: Boolean(window.resizeable),
    };
}

function screenRecords() {
    return desk.screens().map((screen) => ({
        frame: rectOf(workspace.clientArea(KWin.ScreenArea, screen, workspace.currentDesktop)),
        area: rectOf(workspace.clientArea(KWin.MaximizeArea, screen, workspace.currentDesktop)),
    }));
}

function send(method, text, answered) {
    if (answered) {
        callDBus(PEER.service, PEER.path, PEER.name, method, text, answered);
    } else {
        callDBus(PEER.service, PEER.path, PEER.name, method, text);
    }
}

function takeEvents() {
    return JSON.stringify(events.splice(0));
}

function tell(event) {
    if (isOver) {
        return;
    }
    events.push(event);
    if (!isBatching) {
        send("Report", takeEvents());
    }
}

// Everything that `work` has to tell goes as one message.
function batch(work) {
    const isOutermost = !isBatching;
    isBatching = true;
    try {
        work();
    } finally {
        if (isOutermost) {
            isBatching = false;
        }
    }
    if (isOutermost && events.length > 0 && !isOver) {
        send("Report", takeEvents());
    }
}

function tellWindow(window) {
    const entry = known.get(idOf(window));
    if (entry === undefined || window.deleted) {
        return;
    }
    const record = recordOf(window);
    const text = JSON.stringify(record);
    if (text !== entry.text) {
        entry.text = text;
        tell({event: "window", window: record});
    }
}

function tellScreens() {
    const screens = screenRecords();
    const text = JSON.stringify(screens);
    if (text !== screensText) {
        screensText = text;
        tell({event: "screens", screens: screens});
    }
}

function timer(milliseconds, work) {
    const made = new QTimer();
    made.singleShot = true;
    made.interval = milliseconds;
    made.timeout.connect(work);
    return made;
}

function screensChanged() {
    batch(() => {
        tellScreens();
        tellAll();
    });
    areas.start();
}

function tellAll() {
    for (const window of desk.windows()) {
        tellWindow(window);
    }
}

function tellStep() {
    if (moving === null || !moving.hasStepped) {
        return;
    }
    moving.hasStepped = false;
    const window = moving.window;
    batch(() => {
        tellWindow(window);
        if (!moving.isResize) {
            tell({event: "moved", place: pointOf(workspace.cursorPos)});
        }
    });
    step.start();
}

function moveBegan(window) {
    tellEnd();
    const isResize = Boolean(window.resize);
    moving = {window: window, isResize: isResize, start: rectOf(window.frameGeometry),
              hasStepped: false};
    if (!isResize) {
        watchPointer(true);
    }
    batch(() => {
        tellWindow(window);
        tell({event: "moveBegan", id: idOf(window), isResize: isResize,
              place: pointOf(workspace.cursorPos)});
    });
}

function moveStepped(window) {
    if (moving !== null && moving.window === window) {
        pointerMoved();
    }
}

function pointerMoved() {
    if (moving === null) {
        return;
    }
    moving.hasStepped = true;
    if (!step.active) {
        tellStep();
    }
}

// KWin holds a window back that would leave the screen with its title bar, and then tells of no
// step; the pointer goes on all the same.
function watchPointer(isWatched) {
    const signal = workspace.cursorPosChanged;
    if (signal && isWatched) {
        signal.connect(pointerMoved);
    } else if (signal) {
        signal.disconnect(pointerMoved);
    }
}

function moveEnded(window) {
    if (moving === null || moving.window !== window) {
        return;
    }
    step.stop();
    if (!moving.isResize) {
        watchPointer(false);
    }
    ended = moving;
    moving = null;
    // KWin tells of the end before it puts a window back that Escape has taken back.
    settled.start();
}

function tellEnd() {
    if (ended === null) {
        return;
    }
    const move = ended;
    ended = null;
    settled.stop();
    batch(() => {
        tellWindow(move.window);
        tell({event: "moveEnded", isResize: move.isResize,
              isTakenBack: move.window.deleted || isSame(move.window.frameGeometry, move.start),
              place: pointOf(workspace.cursorPos)});
    });
}

function watch(window) {
    const id = idOf(window);
    if (known.has(id)) {
        return;
    }
    known.set(id, {window: window, text: ""});
    const changed = () => tellWindow(window);
    const connect = (signal, work) => {
        if (signal) {
            signal.connect(work);
        }
    };
    const isFurniture = () => window.dock || kindOf(window) === "other";
    connect(window.frameGeometryChanged, () => {
        if (moving !== null && moving.window === window) {
            return;  // Told with the steps.
        }
        tellWindow(window);
        if (isFurniture()) {
            areas.start();
        }
    });
    connect(window.minimizedChanged, changed);
    connect(window.fullScreenChanged, changed);
    connect(window.tileChanged, changed);
    connect(window.shadeChanged, changed);
    connect(window.transientChanged, changed);
    connect(window.desktopFileNameChanged, changed);
    connect(window.windowClassChanged, changed);
    connect(window.desktopsChanged || window.desktopPresenceChanged, changed);
    connect(window.hiddenChanged, () => areas.start());
    if (window.maximizedChanged) {
        connect(window.maximizedChanged, changed);
    } else {
        connect(window.clientMaximizedStateChanged, (_, horizontal, vertical) => {
            const entry = known.get(id);
            if (entry !== undefined) {
                entry.isMaximized = Boolean(horizontal || vertical);
                tellWindow(window);
            }
        });
    }
    connect(desk.moveBegan(window), () => moveBegan(window));
    connect(desk.moveStepped(window), () => moveStepped(window));
    connect(desk.moveEnded(window), () => moveEnded(window));
    if (isFurniture()) {
        areas.start();
    }
}

function forget(window) {
    const id = idOf(window);
    moveEnded(window);
    tellEnd();
    if (known.delete(id)) {
        tell({event: "gone", id: id});
        areas.start();
    }
}

function find(id) {
    const entry = known.get(id);
    return entry !== undefined && !entry.window.deleted ? entry.window : undefined;
}

// A program that grows in steps, as terminals do, takes whole ones by itself where it was given
// something else, but a moment later, when the program has read what became of the window.
function inSteps(size, wanted, step) {
    return step > 1 ? size + Math.floor((wanted - size) / step) * step : wanted;
}

function place(order) {
    const window = find(order.id);
    if (window === undefined) {
        return "gone";
    }
    // Rolled up to its title bar it is not moved, but one that gets a size is rolled down.
    if (window.fullScreen || !window.moveable || (window.shade && order.width === undefined)) {
        return "refused";
    }
    if (window.shade) {
        window.shade = false;
    }
    if (isMaximized(window)) {
        window.setMaximize(false, false);
        const entry = known.get(order.id);
        if (entry !== undefined && window.maximizeMode === undefined) {
            entry.isMaximized = false;
        }
    }
    if (window.tile) {
        window.tile = null;
    }
    const now = window.frameGeometry;
    const step = window.basicUnit || {width: 1, height: 1};
    const wanted = {
        x: order.x !== undefined ? order.x : now.x,
        y: order.y !== undefined ? order.y : now.y,
        width: order.width !== undefined ? inSteps(now.width, order.width, step.width) : now.width,
        height: order.height !== undefined ? inSteps(now.height, order.height, step.height)
                                           : now.height,
    };
    window.frameGeometry = wanted;
    return isSame(window.frameGeometry, wanted) ? "placed" : "asked";
}

function bordersNow() {
    return {tiling: options.electricBorderTiling, maximize: options.electricBorderMaximize};
}

function setBorders(values) {
    options.electricBorderTiling = values.tiling;
    options.electricBorderMaximize = values.maximize;
}

function takeBorders(order) {
    borders = {tiling: order.tiling, maximize: order.maximize};
    if (order.isTaken) {
        setBorders({tiling: false, maximize: false});
    } else {
        giveBordersBack();
    }
    return "done";
}

function giveBordersBack() {
    if (borders !== null) {
        setBorders(borders);
        borders = null;
    }
}

// KWin has read its settings anew, and put them in force.
function configChanged() {
    const values = bordersNow();
    if (borders !== null) {
        borders = values;
        setBorders({tiling: false, maximize: false});
    }
    tell({event: "borders", borders: values});
}

// KWin numbers windows of the same title behind it.
function isAwaited(window) {
    return awaited !== null && !window.deleted && window.pid === awaited.pid &&
        String(window.caption).startsWith(awaited.title);
}

function bringToFront(order) {
    awaited = {pid: order.pid, title: order.title};
    const window = desk.windows().find(isAwaited);
    if (window === undefined) {
        coming.start();
        return "asked";
    }
    awaited = null;
    desk.activate(window);
    return "done";
}

function carryOut(order) {
    switch (order.do) {
        case "place":
            return place(order);
        case "borders":
            return takeBorders(order);
        case "front":
            return bringToFront(order);
        case "end":
            giveBordersBack();
            isEnding = true;
            return "done";
        default:
            return "unknown";
    }
}

function fallSilent() {
    // Nobody is there any more to give it back.
    giveBordersBack();
    isOver = true;
}

function answered(text) {
    isAsking = false;
    if (isOver) {
        return;
    }
    isBatching = true;
    try {
        for (const order of JSON.parse(text)) {
            const id = order.id;
            let result = "failed";
            try {
                result = carryOut(order);
                const window = id !== undefined ? find(id) : undefined;
                if (window !== undefined) {
                    tellWindow(window);
                }
            } finally {
                events.push({event: "done", order: order.order, result: result});
            }
        }
    } finally {
        isBatching = false;
        ask();
        isOver = isEnding;
    }
}

function ask() {
    if (isOver || isAsking) {
        return;
    }
    isAsking = true;
    silence.start();
    send("Next", takeEvents(), answered);
}

desk.added.connect((window) => batch(() => {
    watch(window);
    tellWindow(window);
    if (isAwaited(window)) {
        awaited = null;
        desk.activate(window);
    }
}));
desk.removed.connect((window) => batch(() => forget(window)));
desk.activated.connect((window) => batch(() => {
    if (window) {
        tellWindow(window);
    }
    tell({event: "active", id: window ? idOf(window) : null});
}));
for (const signal of [workspace.numberScreensChanged, workspace.screenResized,
                      workspace.screensChanged, workspace.screenOrderChanged,
                      workspace.virtualScreenGeometryChanged, workspace.currentDesktopChanged,
                      workspace.currentActivityChanged]) {
    if (signal) {
        signal.connect(screensChanged);
    }
}
options.configChanged.connect(configChanged);

function begin() {
    const windows = Array.from(desk.windows());
    windows.sort((first, second) => second.stackingOrder - first.stackingOrder);
    windows.forEach(watch);
    const records = windows.map(recordOf);
    records.forEach((record) => {
        known.get(record.id).text = JSON.stringify(record);
    });
    const screens = screenRecords();
    screensText = JSON.stringify(screens);
    const active = desk.active();
    events.push({event: "all", windows: records, screens: screens,
                 active: active ? idOf(active) : null, borders: bordersNow()});
    ask();
}

begin();
