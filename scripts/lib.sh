# shellcheck shell=bash
# Shared by the scripts in this folder: `. "$(dirname "$0")/lib.sh"`. Leaves the shell in the
# project's folder.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { printf '==> %s\n' "$*"; }

fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

cores() { nproc 2>/dev/null || echo 2; }

# packages_of GROUP…: the packages of these groups in scripts/packages.txt, one per line.
packages_of() {
    awk -v wanted="$*" '
        BEGIN { count = split(wanted, groups, " ") }
        /^[[:space:]]*(#|$)/ { next }
        { for (i = 1; i <= count; ++i)
              if (index("," $1 ",", "," groups[i] ",")) { print $2; next } }
    ' scripts/packages.txt
}

# require_packages GROUP…: installs what is missing of these groups.
require_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "no apt-get here: taking for granted what scripts/packages.txt lists for: $*"
        return
    fi
    local wanted missing
    mapfile -t wanted < <(packages_of "$@" | sort -u)
    mapfile -t missing < <(comm -13 \
        <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null |
            sed -n 's/^installed //p' | sort -u) \
        <(printf '%s\n' "${wanted[@]}"))
    if [ "${#missing[@]}" -eq 0 ]; then
        return
    fi

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "these packages are missing and there is no sudo to" \
            "install them with; as root: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    as_root+=(env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300)
    say "installing ${#missing[@]} missing packages: ${missing[*]}"
    # Once for all scripts that call one another. A mirror may be out of reach while the packages
    # themselves are at hand; the installation says so when they are not.
    if [ -z "${LUMATILE_LISTS_UPDATED:-}" ]; then
        "${as_root[@]}" update || say "the package lists could not be refreshed; trying without"
        export LUMATILE_LISTS_UPDATED=1
    fi
    "${as_root[@]}" install --yes --no-install-recommends "${missing[@]}" </dev/null ||
        fail "apt-get could not install: ${missing[*]}"
}

# build FOLDER TARGET…: what `cmake --build` does, on all cores, with its progress.
build() {
    local folder=$1
    shift
    cmake --build "$folder" --parallel "$(cores)" ${1:+--target "$@"}
}
