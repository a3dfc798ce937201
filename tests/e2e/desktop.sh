# shellcheck shell=bash
# shellcheck disable=SC2154 # the scripts that source this set program, scratch and shots
# Sourced by the tests that lead the program through a real desktop: windows by their titles,
# pointer and keys as a person uses them, screenshots, and checks.

patience=200 # times a tenth of a second, for whatever the program has to do

# How large the program shows a pixel of its own, in hundredths of a pixel of the screen. All places
# below are in the program's pixels.
LC_ALL=C printf -v scale_percent '%.0f' "${PLUMARA_TOUR_SCALE:-1}e2"
scaled() { echo $((($1 * scale_percent + 50) / 100)); }

# settle: gives the program a home folder, $person. A program for Windows has one in its own Windows,
# and takes the scale from there.
settle() {
    if [[ $program == *.exe ]]; then
        person=$WINEPREFIX/drive_c/users/$USER
        return
    fi
    person=$scratch/home
    export HOME=$person TMPDIR=$scratch XDG_RUNTIME_DIR=$scratch/run QT_SCALE_FACTOR=${PLUMARA_TOUR_SCALE:-1}
    mkdir -p "$HOME"
    mkdir -m 700 "$XDG_RUNTIME_DIR"
}
# launch <program> [argument]...: becomes the program. Call it in a process of its own.
launch() {
    [[ $1 != *.exe ]] || set -- wine "$@"
    exec "$@"
}
# named <path>: the path as the person types it; on Windows from the home folder on, where the dialogs
# start.
named() {
    local path=$1
    if [[ $program == *.exe ]]; then
        if [[ $path == "$person"/* ]]; then
            path=${path#"$person"/}
        else
            path=Z:$path
        fi
        path=${path//\//\\}
    fi
    echo "$path"
}

fail() {
    printf 'FAILED: %s\n' "$*" >&2
    import -window root "$shots/failed.png" || true
    exit 1
}

# eventually <what> <command>...: waits until the command succeeds.
eventually() {
    local what=$1 i
    shift
    for ((i = 0; i < patience; ++i)); do
        "$@" >/dev/null 2>&1 && return
        sleep 0.1
    done
    fail "$what"
}

# The visible window whose whole title is the argument.
find_window() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | tail -n 1; }
is_shown() { [[ -n $(find_window "$1") ]]; }
is_gone() { ! is_shown "$1"; }

is_dead() { ! kill -0 "$1"; }

# on <title>: waits for the window; everything that follows happens in it.
on() {
    eventually "no window '$1'" is_shown "$1"
    window=$(find_window "$1")
    xdotool windowactivate --sync "$window" 2>/dev/null || true
    sleep 0.3
}
has_title() { [[ $(xdotool getwindowname "$window") == "$1" ]]; }
expect_title() { eventually "the title is not '$1'" has_title "$1"; }

point() { xdotool mousemove --window "$window" "$(scaled "$1")" "$(scaled "$2")"; }
# click <x> <y> [button]: in the window's pixels.
click() {
    point "$1" "$2"
    sleep 0.1
    xdotool click "${3:-1}"
    sleep 0.3
}
# drag <x> <y> <x> <y>...: presses at the first point and releases at the last.
drag() {
    point "$1" "$2"
    sleep 0.1
    xdotool mousedown 1
    while (($# >= 2)); do
        point "$1" "$2"
        sleep 0.08
        shift 2
    done
    xdotool mouseup 1
    sleep 0.3
}
keys() {
    xdotool key --delay 80 "$@"
    sleep 0.3
}
write() {
    xdotool type --delay 30 "$1"
    sleep 0.2
}

# shot <name>: a numbered picture of the window.
shot_number=0
shot() {
    printf -v shot_file '%s/%02d-%s.png' "$shots" $((++shot_number)) "$1"
    sleep 0.3
    # Fails when a window vanishes while the picture is taken.
    eventually "no screenshot" import -window root "$shot_file"
    echo "  $(basename "$shot_file")"
}

# cut_out <x> <y> <width> <height>: what the window shows there, as a PNG.
cut_out() {
    import -window "$window" \
        -crop "$(scaled "$3")x$(scaled "$4")+$(scaled "$1")+$(scaled "$2")" png:-
}

# ink <x> <y> <width> <height>: how many dark pixels of the screen the window shows there.
ink() {
    cut_out "$@" \
        | convert png:- -colorspace gray -threshold 50% -format '%[fx:int(w*h*(1-mean)+0.5)]' info:
}
has_ink() { (($(ink "$@") > 0)); }
has_no_ink() { (($(ink "$@") == 0)); }

# expect_json <file> <jq condition>
expect_json() { jq -e "$2" "$1" >/dev/null || fail "in $1: $2"; }
