# shellcheck shell=bash
# shellcheck disable=SC2154 # what scripts/previews sets
# shellcheck disable=SC2034 # what the pictures use
# A person at the program, and the camera. Places are in the program's pixels, from the window's
# corner.

home_title="Orvane Plumara - Inicio"
board_title="Orvane Plumara - Modo Pizarra"
open_button=(530 145) first_row=(500 371) boards_page=(115 128) help_page=(115 228)
cursor_tool=(27 210) note_tool=(27 250) pen_tool=(27 290) eraser_tool=(27 410) close_tool=(27 672)
present=(1070 27)

# The screen shows no pointer in a picture of it; these are ours, the hot spot at 0,0.
declare -A pointers=(
    [arrow]="M0,0 V16.5 L3.9,12.9 L6.4,18.7 L8.9,17.6 L6.4,12 H11.6 Z"
    [cross]="M-2,-11 H2 V-2 H11 V2 H2 V11 H-2 V2 H-11 V-2 H-2 Z"
    [hand]="M-1.7,1.2 A1.75,1.75 0 0 1 1.8,1.2 V7.6 L8.4,9 A2.4,2.4 0 0 1 10.2,11.8 L9,18.6 H0.4
        L-5.4,12 A1.6,1.6 0 0 1 -3.2,9.8 L-1.7,11.2 Z"
)

start() {
    "$program" &
    pid=$!
    on "$home_title"
}
# A program that is killed would leave behind by what it knows that it runs.
finish() {
    keys alt+F4
    eventually "the program does not end" is_dead "$pid"
}
# open_board <name>: the board that was prepared.
open_board() {
    keep_board "$1"
    click "${open_button[@]}"
    on "Abrir proyecto"
    write "$1.vtrz"
    keys Return
    on "$board_title"
    eventually "the home window is still there" is_gone "$home_title"
}
close_board() {
    click "${close_tool[@]}"
    on "Guardar cambios"
    keys Tab space # No
    on "$home_title"
    eventually "the board window is still there" is_gone "$board_title"
}

# A menu and a tool tip are windows of their own.
popup() { xdotool search --onlyvisible --pid "$pid" 2>/dev/null | grep -vx "$window" | tail -n 1; }
has_popup() { [[ -n $(popup) ]]; }
expect_popup() { eventually "no $1" has_popup; }

# corner_of <window>: its left and top on the screen, in the screen's pixels.
corner_of() {
    xwininfo -id "$1" | sed -n 's/.*Absolute upper-left [XY]: *//p'
}

# point_at <entry> <entries>: the pointer goes to that entry of the open menu; pointed is its place.
point_at() {
    local left top width height menu_left menu_top
    { read -r left && read -r top; } < <(corner_of "$window")
    { read -r menu_left && read -r menu_top; } < <(corner_of "$(popup)")
    read -r width height < <(xdotool getwindowgeometry "$(popup)" | sed -n 's/.*: \(.*\)x\(.*\)/\1 \2/p')
    pointed=($(((menu_left - left + width / 2) * 100 / scale_percent))
        $(((menu_top - top + height * (2 * $1 - 1) / (2 * $2)) * 100 / scale_percent)))
    point "${pointed[@]}"
}

press() {
    point "$1" "$2"
    sleep 0.1
    xdotool mousedown 1
    sleep 0.1
}
# follow <x> <y>...: the pointer goes along the curve through these points.
follow() {
    local points i steps=()
    read -ra points < <(curve 8 0 "$@")
    for ((i = 0; i < ${#points[@]}; i += 2)); do
        # Apart, because the toolkit takes steps that come together for one.
        steps+=(mousemove --window "$window" "$(scaled "${points[i]}")" "$(scaled "${points[i + 1]}")"
            sleep 0.012)
    done
    xdotool "${steps[@]}"
}
release() { xdotool mouseup 1; }

is_full_screen() { xprop -id "$(find_window "$board_title")" _NET_WM_STATE | grep -q FULLSCREEN; }
show_on_full_screen() {
    click "${present[@]}"
    expect_popup "list"
    keys Down Return
    eventually "the board does not fill the screen" is_full_screen
    on "$board_title"
}

# cut_out_of_screen <x> <y> <width> <height>: what is to be seen at that part of the window, menus and
# tool tips above it included, as a PNG.
cut_out_of_screen() {
    local left top
    { read -r left && read -r top; } < <(corner_of "$window")
    import -window root -crop \
        "$(scaled "$3")x$(scaled "$4")+$((left + $(scaled "$1")))+$((top + $(scaled "$2")))" png:-
}
# is_still <x> <y> <width> <height>: there is to be seen what was to be seen a moment ago.
is_still() {
    local before=$seen
    sleep 0.3
    seen=$(cut_out_of_screen "$@" | convert png:- rgb:- | sha256sum)
    [[ $seen == "$before" ]]
}

clock_strip=50 # at the foot of the board, where the time changes

# take <name> <x> <y> <width> <height> [<pointer> <x> <y>]: a picture of that part of the window,
# when nothing moves there any more, with a pointer at that place of the window.
take() {
    local pointer=()
    seen=
    eventually "the window does not come to rest" is_still "$2" "$3" "$4" $(($5 - clock_strip))
    if (($# > 5)); then
        pointer=(-fill white -stroke '#1a1a1a' -strokewidth 1 -draw
            "translate $(scaled $(($7 - $2))),$(scaled $(($8 - $3)))
            scale $QT_SCALE_FACTOR,$QT_SCALE_FACTOR path '${pointers[$6]}'")
    fi
    cut_out_of_screen "${@:2:4}" | convert png:- +repage "${pointer[@]}" -depth 8 -strip \
        -define png:compression-level=9 "$shots/$1.png"
    echo "  $1.png"
}
