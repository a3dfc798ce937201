# Sourced by whatever leads the program through a screen: what a person does with a pointer, keys and
# windows, what is to be seen then, and screenshots of it.
# shellcheck shell=bash
# shellcheck disable=SC2154 # places.sh
# shellcheck disable=SC2034 # used by those who source this file

desktop=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=desktop/places.sh
source "$desktop/places.sh"

patience=20 # seconds, for whatever the program has to do

# How large the program shows a pixel of its own, in hundredths of a pixel of the screen. All places
# below are in the program's pixels.
LC_ALL=C printf -v scale_percent '%.0f' "${PLUMARA_TOUR_SCALE:-1}e2"
scaled() { echo $((($1 * scale_percent + 50) / 100)); }
screen_width=$(scaled "${screen_size[0]}") screen_height=$(scaled "${screen_size[1]}")

is_for_windows() { [[ $1 == *.exe ]]; }

# The beginning and the end

# on_screen <script> <argument>...: where the script has no screen of its own yet, it starts again in
# a virtual one, that of Windows if an argument is a program for it.
on_screen() {
    [[ ${PLUMARA_TOUR_DISPLAY:-} != ready ]] || return 0
    export PLUMARA_TOUR_DISPLAY=ready
    local size=${screen_width}x$screen_height argument
    for argument in "$@"; do
        if is_for_windows "$argument"; then
            export PLUMARA_DISPLAY=$size PLUMARA_DPI=$((96 * scale_percent / 100))
            exec "$desktop/../scripts/with-wine" "$@"
        fi
    done
    exec "$desktop/../scripts/with-display" "$size" "$@"
}

# prepare <program> <folder>: sets program, shots, the folder of the screenshots, and scratch, one that
# is removed at the end with all other temporary ones, when all that was started is ended, too. Gives
# the program a home folder, person, with its boards. A program for Windows has one in its own Windows,
# and takes the scale from there.
prepare() {
    program=$1
    mkdir -p "$2"
    shots=$(realpath "$2")
    rm -f "$shots"/[0-9][0-9]-*.png "$shots/failed.png"
    scratch=$(mktemp -d)
    temporary=("$scratch")
    trap 'kill -9 $(jobs -p) 2>/dev/null || true; rm -rf "${temporary[@]}"' EXIT
    export LC_ALL=C.UTF-8 LANGUAGE=es_MX
    person=$scratch/home
    if is_for_windows "$program"; then
        person=$WINEPREFIX/drive_c/users/$USER
    else
        export HOME=$person TMPDIR=$scratch XDG_RUNTIME_DIR=$scratch/run
        # The toolkit's own look, not that of a desktop which the one who runs this may have.
        export QT_SCALE_FACTOR=${PLUMARA_TOUR_SCALE:-1} QT_QPA_PLATFORMTHEME=generic
        mkdir "$HOME"
        mkdir -m 700 "$XDG_RUNTIME_DIR"
    fi
    boards=$person/Documents/OrvanePlumara
}

# launch <program> [argument]...: becomes the program. Call it in a process of its own.
launch() {
    ! is_for_windows "$1" || set -- wine "$@"
    exec "$@"
}
# start: the program, until its home window is there.
start() {
    launch "$program" &
    pid=$!
    on "$home_title"
}
# ends_with <code>: the program ends by itself, with that exit code.
ends_with() {
    local code=0
    eventually "the program does not end" is_dead "$pid"
    wait "$pid" || code=$?
    ((code == $1)) || fail "the program ended with $code"
}
# end: closes the home window, and with it the program.
end() {
    keys alt+F4
    ends_with 0
}
is_dead() { ! kill -0 "$1"; }

passed=0
# passes <what>: counts a check that came to its end.
passes() {
    echo "  $1"
    passed=$((passed + 1))
}
sum_up() { echo "$passed passed, 0 failed"; }
fail() {
    printf 'FAILED: %s\n' "$*" >&2
    import -window root "$shots/failed.png" || true
    exit 1
}

# Waiting

# eventually <what> <command>...: waits until the command succeeds.
eventually() {
    local what=$1 end=$((SECONDS + patience))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || fail "$what"
        sleep 0.03
    done
}

# processes: the numbers of those that take part in what an input does: the program, the screen and
# the window manager. In wine the program is all that there is of its Windows.
processes() {
    echo "${PLUMARA_DISPLAY_PROCESSES:-}"
    if is_for_windows "$program"; then
        grep -lzx "WINEPREFIX=$WINEPREFIX" /proc/[0-9]*/environ 2>/dev/null             | sed -n "s,/proc/\([0-9]*\)/.*,,; /^$$\$/!p"
    else
        echo "${pid:-}"
    fi
}
# activity <process>...: how often each of their threads has run, and whether it runs. When it stays
# the same, all of them slept. wine's server has something to do all the time and only must not run.
activity() {
    local process files=() name
    for process in "$@"; do
        read -r name 2>/dev/null <"/proc/$process/comm" || continue
        if [[ $name == wineserver* ]]; then
            grep -h ^State "/proc/$process/status" 2>/dev/null || true
        else
            files+=("/proc/$process/task/"*/status)
        fi
    done
    grep -h -e ^State -e ctxt_switches "${files[@]}" 2>/dev/null || true
}
# wait_idle: until the program has done all that it was asked to, so that what comes next meets it at
# rest. What moves by itself, like a progress bar, is not waited for longer than a second.
wait_idle() {
    local before after i watched
    read -ra watched < <(processes | tr '
' ' ') || true
    after=$(activity "${watched[@]}")
    for ((i = 0; i < 30; ++i)); do
        before=$after
        sleep 0.03
        after=$(activity "${watched[@]}")
        [[ $after != "$before" || $after == *$'State:\t'[RD]* ]] || return 0
    done
}

# Windows

# The visible window whose whole title is the argument.
find_window() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | tail -n 1; }
is_shown() { [[ -n $(find_window "$1") ]]; }
is_gone() { ! is_shown "$1"; }

find_and_keep() {
    window=$(find_window "$1")
    [[ -n $window ]]
}
# on <title>: waits for the window; everything that follows happens in it.
on() {
    eventually "no window '$1'" find_and_keep "$1"
    xdotool windowactivate --sync "$window" 2>/dev/null || true
    wait_idle
}
has_title() { [[ $(xdotool getwindowname "$window") == "$1" ]]; }
expect_title() { eventually "the title is not '$1'" has_title "$1"; }

# A menu and a tool tip are windows of their own.
popup() { xdotool search --onlyvisible --pid "$pid" 2>/dev/null | grep -vx "$window" | tail -n 1; }
has_popup() { [[ -n $(popup) ]]; }
# expect_popup <what>
expect_popup() {
    eventually "no $1" has_popup
    wait_idle
}

is_full_screen() { xprop -id "$(find_window "$board_title")" _NET_WM_STATE | grep -q FULLSCREEN; }
is_windowed() { is_shown "$board_title" && ! is_full_screen; }

# corner_of <window>: its left and top on the screen, in the screen's pixels.
corner_of() { xwininfo -id "$1" | sed -n 's/.*Absolute upper-left [XY]: *//p'; }
# size_of <window>: its width and height on the screen, as 1200x700.
size_of() { xdotool getwindowgeometry "$1" | sed -n 's/ *Geometry: //p'; }

# The pointer

# input <xdotool's words>...: what a person does, and what the program makes of it. Asking for the
# desktops at the end makes sure that the screen has seen all that comes before.
input() {
    xdotool "$@" get_num_desktops >/dev/null
    wait_idle
}
# point <x> <y> [xdotool's words]...: goes to a place of the window and does something there.
point() { input mousemove --window "$window" -- "$(scaled "$1")" "$(scaled "$2")" "${@:3}"; }
# click <x> <y> [button]
click() { point "$1" "$2" click --delay 0 "${3:-1}"; }
double_click() { point "$1" "$2" click --repeat 2 --delay 50 1; }
# press <x> <y>: and holds the button.
press() { point "$1" "$2" mousedown 1; }
release() { input mouseup 1; }
# drag <x> <y> <x> <y>...: presses at the first point and releases at the last.
drag() {
    press "$1" "$2"
    shift 2
    while (($# >= 2)); do
        # Each for itself, because the toolkit takes steps that come together for one.
        point "$1" "$2"
        shift 2
    done
    release
}
# point_at_entry <number> <entries>: the pointer goes to that entry of the open menu; pointed is its
# place in the window.
point_at_entry() {
    local left top width height menu menu_left menu_top
    menu=$(popup)
    { read -r left && read -r top; } < <(corner_of "$window")
    { read -r menu_left && read -r menu_top; } < <(corner_of "$menu")
    IFS=x read -r width height < <(size_of "$menu")
    pointed=($(((menu_left - left + width / 2) * 100 / scale_percent))
        $(((menu_top - top + height * (2 * $1 - 1) / (2 * $2)) * 100 / scale_percent)))
    point "${pointed[@]}"
}

# The keys

# keys <key>...
keys() {
    local key
    for key in "$@"; do
        input key "$key"
    done
}
# write <text>
write() {
    if is_for_windows "$program"; then
        write_in_wine "$1"
    else
        xdotool type --delay 12 "$1"
        wait_idle
    fi
}
# wine asks which keys are down later than a letter is typed, so each is typed for itself, and the key
# that makes a letter Spanish is down before.
write_in_wine() {
    local i letter
    for ((i = 0; i < ${#1}; ++i)); do
        letter=${1:i:1}
        if [[ $letter == [[:ascii:]] ]]; then
            xdotool type "$letter"
        else
            input keydown ISO_Level3_Shift
            xdotool type --delay 100 "$letter"
        fi
        wait_idle
    done
}
# typed <path>: the path as a person types it; on Windows from the home folder on, where the dialogs
# start.
typed() {
    local path=$1
    if is_for_windows "$program"; then
        if [[ $path == "$person"/* ]]; then
            path=${path#"$person"/}
        else
            path=Z:$path
        fi
        path=${path//\//\\}
    fi
    echo "$path"
}

# Boards

# choose_file <title of the dialog> <path> [picture]: picture is the name of a screenshot of it.
choose_file() {
    on "$1"
    write "$(typed "$2")"
    [[ -z ${3:-} ]] || shot "$3"
    keys Return
}
create_board() {
    click "${new_board_button[@]}"
    see_board
}
# open_board <path> [picture of the dialog]
open_board() {
    click "${open_board_button[@]}"
    choose_file "$open_title" "$@"
    see_board
}
# open_row <x> <y>: of the list of recent boards
open_row() {
    click "$@"
    see_board
}
see_board() {
    on "$board_title"
    eventually "the home window is still there" is_gone "$home_title"
}
# save_board <path without its ending> [picture of the dialog]
save_board() {
    click "${save_button[@]}"
    choose_file "$save_title" "$@"
    eventually "no board was saved" test -s "$1.vtrz"
    on "$board_title"
}
# close_board [picture of the question]: leaves what is not saved.
close_board() {
    click "${close_button[@]}"
    on "$unsaved_title"
    [[ -z ${1:-} ]] || shot "$1"
    keys Tab space # No
    see_home
}
see_home() {
    on "$home_title"
    eventually "the board window is still there" is_gone "$board_title"
}
draw_stroke() {
    click "${pen_tool[@]}"
    expect_title "$pen_title"
    drag "${stroke[@]}"
    expect_title "$board_title"
}
# present [picture of the list]
present() {
    click "${present_list[@]}"
    [[ -z ${1:-} ]] || shot "$1"
    keys Down Return
    eventually "the board does not fill the screen" is_full_screen
    on "$board_title"
}

# What is to be seen

# shot <name>: a numbered picture of the screen. The fastest compression is enough for it.
shot_number=0
shot() {
    local file
    printf -v file '%s/%02d-%s.png' "$shots" $((++shot_number)) "$1"
    wait_idle
    # Fails when a window vanishes while the picture is taken.
    eventually "no screenshot" import -window root -quality 10 "$file"
    echo "  $(basename "$file")"
}

# cut_out <x> <y> <width> <height>: what the window shows there, as a PNG.
cut_out() {
    import -window "$window" \
        -crop "$(scaled "$3")x$(scaled "$4")+$(scaled "$1")+$(scaled "$2")" png:-
}
# cut_out_of_screen <x> <y> <width> <height>: what is to be seen at that part of the window, menus and
# tool tips above it included, as a PNG.
cut_out_of_screen() {
    local left top
    { read -r left && read -r top; } < <(corner_of "$window")
    import -window root -crop \
        "$(scaled "$3")x$(scaled "$4")+$((left + $(scaled "$1")))+$((top + $(scaled "$2")))" png:-
}
# pixels: a checksum of the picture that is read, however it is stored.
pixels() { convert png:- rgb:- | sha256sum; }

# ink <x> <y> <width> <height>: how many dark pixels of the screen the window shows there.
ink() {
    cut_out "$@" \
        | convert png:- -colorspace gray -threshold 50% -format '%[fx:int(w*h*(1-mean)+0.5)]' info:
}
has_ink() { (($(ink "$@") > 0)); }
has_no_ink() { (($(ink "$@") == 0)); }

color_at() { cut_out "$1" "$2" 1 1 | convert png:- -format '%[hex:p{0,0}]' info:; }
is_white() { [[ $(color_at "$@") == FFFFFF* ]]; }
is_grey() { [[ $(color_at "$@") == F0F0F0* ]]; }

# expect_json <file> <jq condition>
expect_json() { jq -e "$2" "$1" >/dev/null || fail "in $1: $2"; }
