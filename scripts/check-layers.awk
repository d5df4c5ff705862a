# Reads the table of layers, then lines "file:line:#include …" with paths below src/; prints those
# that the file's layer may not have.

# The target whose file this is: its own source, else the nearest folder that is a target's.
function target_of(path) {
    if (path in owner) return owner[path]
    while (path ~ /\//) {
        sub(/\/[^\/]*$/, "", path)
        if (path in owner) return owner[path]
    }
    return ""
}

function reach(from, target,    i, count, names) {
    if ((from, target) in reached) return
    reached[from, target] = 1
    count = split(links[target], names, " ")
    for (i = 1; i <= count; ++i) reach(from, names[i])
}

function wraps(own, pattern,    count, names, i) {
    count = split(links[own], names, " ")
    for (i = 1; i <= count; ++i) if (names[i] ~ pattern) return 1
    return 0
}

function forbid(why) {
    print place ": " text "  (" why ")"
    bad = 1
}

FNR == NR {
    split($0, column, "|")
    layer[column[1]] = column[2]
    links[column[1]] = column[4]
    count = split(column[3], places, " ")
    for (i = 1; i <= count; ++i) owner[places[i]] = column[1]
    next
}

!ready {
    for (target in layer) reach(target, target)
    ready = 1
}

{
    match($0, /:[0-9]+:/)
    file = substr($0, 1, RSTART - 1)
    place = substr($0, 1, RSTART + RLENGTH - 2)
    text = substr($0, RSTART + RLENGTH)
    own = target_of(file)
    if (own == "") { forbid("a folder that is no target's"); next }
    rank = layer[own]

    if (text ~ /"[^"]*"/) {
        match(text, /"[^"]*"/)
        of = target_of(substr(text, RSTART + 1, RLENGTH - 2))
        if (of == "") forbid("not a path from src/ to a target's file")
        else if (!((own, of) in reached)) forbid(own " does not link " of)
        next
    }
    if (rank == "program" || text ~ /<[a-z0-9_]+>/) next
    if (text ~ /<Q/) {
        if (wraps(own, "^Qt6::")) next
    } else if (text ~ /<xcb\//) {
        if (wraps(own, "^PkgConfig::xcb$")) next
    } else if (text ~ /<(gio|glib)/) {
        if (wraps(own, "^PkgConfig::gio$")) next
    } else if (text ~ /<nlohmann\//) {
        if (wraps(own, "^nlohmann_json::")) next
    } else if (text ~ /<utf8proc\.h>/) {
        if (wraps(own, "^PkgConfig::utf8proc$")) next
    } else if (rank == "helper" || rank == "adapter" || rank == "model") {
        if (text !~ /<X11\//) next
    } else if (own == "Base" && text ~ /<(fcntl|unistd|sys\/(file|stat))\.h>/) {
        # Only the system can flush a file to the disk, which a durable replacement needs.
        next
    }
    forbid("neither the standard library nor a library that " own " links")
}

END { exit bad }
