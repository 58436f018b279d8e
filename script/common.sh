# shellcheck shell=bash
# Sourced by the scripts beside it: goes to the root of the project, builds quietly, lends a virtual display.
set -euo pipefail

self=$(readlink -f "$0")
# shellcheck disable=SC2034 # for arguments that name a file
here=$PWD
cd "$(dirname "$self")/.."

# Ends with 2, so that 1 stays for "it ran, and what it looked at was not good".
Fail() {
    echo "script/$(basename "$self"): $*" >&2
    exit 2
}

# Build <preset> [targets]: says nothing when all goes well, else shows the errors; everything stays in build/<preset>.log.
Build() {
    local preset=$1 log=build/$1.log
    shift
    mkdir -p build
    if ! { cmake --preset "$preset" && cmake --build "build/$preset" ${1:+--target "$@"}; } >"$log" 2>&1 </dev/null; then
        grep -E -m 20 -A 3 'error: ' "$log" >&2 || tail -n 40 "$log" >&2
        Fail "la compilación falló; todo lo dicho está en $PWD/$log"
    fi
}

# Root without a session, or sudo out of another user's, has no folder of this kind; Qt complains of that.
OwnRuntimeFolder() {
    [ -O "${XDG_RUNTIME_DIR:-}" ] && return
    export XDG_RUNTIME_DIR=${TMPDIR:-/tmp}/runtime-$UID
    [ -d "$XDG_RUNTIME_DIR" ] || mkdir -m 700 "$XDG_RUNTIME_DIR"
}

# StartDisplay <width>x<height>: a virtual display on the first free number, in DISPLAY. It ends with the script.
StartDisplay() {
    local number=build/display.$$
    mkdir -p build
    trap StopDisplay EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    Xvfb -displayfd 3 -screen 0 "$1x24" -noreset -nolisten tcp 3>"$number" >build/display.log 2>&1 &
    server=$!
    for _ in $(seq 150); do
        [ -s "$number" ] && break
        kill -0 "$server" 2>/dev/null || break
        sleep 0.1
    done
    DISPLAY=:$(cat "$number")
    export DISPLAY QT_QPA_PLATFORM=xcb
    unset WAYLAND_DISPLAY
    rm -f "$number"
    [ "$DISPLAY" != : ] || Fail "la pantalla virtual no arrancó: $(tail -n 3 build/display.log)"
    OwnRuntimeFolder
}

# Ends the program first (its process id in `program`), so that it can close its database, then the display.
StopDisplay() {
    local process
    for process in ${program:-} ${server:-}; do
        kill "$process" 2>/dev/null || true
        wait "$process" 2>/dev/null || true
    done
    program='' server=''
}
