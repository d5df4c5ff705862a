# Reads lines "file:line:text" of the tests, benchmarks and the demonstration, in which text is an
# include or a part of a CMakeLists.txt that names a source; prints those that reach into the folder
# of another suite.

function folder_of(path) {
    sub(/\/[^\/]*$/, "", path)
    return path
}

# Whether a file of the folder may use one that lies in the other folder: its own, one above it, or
# one whose purpose it is. Support knows only what is more general than itself.
function may_use(own, other) {
    if (index(own "/", other "/") == 1) return 1
    if (other == "tests/support") return 1
    if (other == "tests/desktop/support") return own !~ /^tests\/(support|unit)(\/|$)/
    if (other ~ /^tests\/desktop\/support\//) {
        return own !~ /^tests\/(support|unit)(\/|$)/ && own != "tests/desktop/support"
    }
    if (other == "benchmarks/support") return own ~ /^benchmarks\//
    return 0
}

{
    match($0, /:[0-9]+:/)
    file = substr($0, 1, RSTART - 1)
    place = substr($0, 1, RSTART + RLENGTH - 2)
    text = substr($0, RSTART + RLENGTH)
    why = ""
    if (text ~ /\.\.\/[^"]*\.(h|cpp)/) {
        why = "paths start at the root of the tree"
    } else if (match(text, /(tests|benchmarks|demonstration)\/[^" )]*\.(h|cpp)/)) {
        other = folder_of(substr(text, RSTART, RLENGTH))
        if (!may_use(folder_of(file), other)) why = other " is another suite's"
    }
    if (why != "") {
        print place ": " text "  (" why ")"
        bad = 1
    }
}

END { exit bad }
