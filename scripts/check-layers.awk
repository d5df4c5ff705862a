# Reads the table of layers, then lines "file:line:#include …"; prints those that are forbidden.

function module_of(path,    stem) {
    stem = path
    sub(/\.[a-z]+$/, "", stem)
    return stem in views ? views[stem] : folder_of(path)
}

function folder_of(path) {
    # The nearest folder that is a module's.
    while (path ~ /\//) {
        sub(/\/[^\/]*$/, "", path)
        if (path in layers) return path
    }
    return ""
}

function reach(from, target,    i, count, names) {
    if ((from, target) in reached) return
    reached[from, target] = 1
    if (target in folders) may[from, folders[target]] = 1
    count = split(links[target], names, " ")
    for (i = 1; i <= count; ++i) reach(from, names[i])
}

function exists(path,    line, found) {
    found = (getline line < path) >= 0
    close(path)
    return found
}

function links_qt(folder,    pair, part) {
    for (pair in reached) {
        split(pair, part, SUBSEP)
        if (part[1] == folder && part[2] ~ /^Qt6::/) return 1
    }
    return 0
}

function forbid(why) {
    print place ": " text "  (" why ")"
    bad = 1
}

FNR == NR {
    split($0, column, "|")
    targets[column[1]] = 1
    folders[column[1]] = column[3]
    if (column[2] == "views") {
        # Views share a folder with a library that knows no toolkit: they are told by their names.
        folders[column[1]] = column[3] " (views)"
        layers[folders[column[1]]] = "views"
        count = split(column[5], sources, " ")
        for (i = 1; i <= count; ++i) {
            sub(/\.(cpp|h)$/, "", sources[i])
            views[column[3] "/" sources[i]] = folders[column[1]]
        }
        links[column[1]] = column[4]
        next
    }
    # The application's ports share its folder; the stricter layer counts there.
    if (column[2] != "ports") layers[column[3]] = column[2]
    links[column[1]] = column[4]
    next
}

!ready {
    for (target in targets) reach(folders[target], target)
    ready = 1
}

{
    match($0, /:[0-9]+:/)
    file = substr($0, 1, RSTART - 1)
    place = substr($0, 1, RSTART + RLENGTH - 2)
    text = substr($0, RSTART + RLENGTH)

    # The one place that knows every adapter.
    if (file == "Lumatile/main.cpp") next
    own = module_of(file)
    if (own == "") { forbid("a folder that is no module's"); next }
    layer = layers[own]

    if (text ~ /"[^"]*"/) {
        match(text, /"[^"]*"/)
        path = substr(text, RSTART + 1, RLENGTH - 2)
        of = module_of(path)
        if (of == "") forbid("not a path from the root to a module's file")
        else if (of != own && !((own, of) in may)) forbid(own " does not link " of)
        else if (of != own && layers[of] == "adapter") forbid("another adapter")
        else if (layer == "adapter" && layers[of] == "application") {
            # A port is a header alone.
            sub(/\.h$/, ".cpp", path)
            if (exists(root "/" path)) forbid("not a port")
        }
        next
    }
    # Only the system can flush a file to the disk, which a durable replacement needs.
    if (file == "commands/AtomicFile.cpp" && text ~ /<(fcntl|unistd|sys\/stat)\.h>/) next
    if (layer == "adapter" && text ~ /<(Q|xcb\/|X11\/|nlohmann\/)/) {
        if (text ~ /<Q/ && links_qt(own)) next
        if (text ~ /<xcb\// && ((own, "PkgConfig::xcb") in reached)) next
        forbid("a library that " own " does not wrap")
        next
    }
    if (layer == "views" && text ~ /<Q/ && links_qt(own)) next
    if (layer == "adapter" || text ~ /<[a-z0-9_]+>/) next
    if (text ~ /<nlohmann\// && ((own, "nlohmann_json::nlohmann_json") in reached)) next
    if (text ~ /<utf8proc\.h>/ && ((own, "PkgConfig::utf8proc") in reached)) next
    forbid("neither the standard library nor a library that " own " links")
}

END { exit bad }
