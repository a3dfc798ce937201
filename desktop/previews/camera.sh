# The camera: pictures of the window at rest, with a pointer in them; and a hand that draws.
# shellcheck shell=bash
# shellcheck disable=SC2154 # desktop/verbs.sh and scripts/previews

# The screen shows no pointer in a picture of it; these are ours, the hot spot at 0,0.
declare -A pointers=(
    [arrow]="M0,0 V16.5 L3.9,12.9 L6.4,18.7 L8.9,17.6 L6.4,12 H11.6 Z"
    [cross]="M-2,-11 H2 V-2 H11 V2 H2 V11 H-2 V2 H-11 V-2 H-2 Z"
    [hand]="M-1.7,1.2 A1.75,1.75 0 0 1 1.8,1.2 V7.6 L8.4,9 A2.4,2.4 0 0 1 10.2,11.8 L9,18.6 H0.4
        L-5.4,12 A1.6,1.6 0 0 1 -3.2,9.8 L-1.7,11.2 Z"
)

# follow <x> <y>...: the pointer goes along the curve through these points.
follow() {
    local points i steps=()
    read -ra points < <(curve 8 0 "$@")
    for ((i = 0; i < ${#points[@]}; i += 2)); do
        # Apart, because the toolkit takes steps that come together for one.
        steps+=(mousemove --window "$window" "$(scaled "${points[i]}")" "$(scaled "${points[i + 1]}")"
            sleep 0.012)
    done
    input "${steps[@]}"
}

# is_still <x> <y> <width> <height>: there is to be seen what was to be seen a moment ago.
is_still() {
    local before=$seen
    wait_idle
    seen=$(cut_out_of_screen "$@" | pixels)
    [[ $seen == "$before" ]]
}

# take <name> <x> <y> <width> <height> [<pointer> <x> <y>]: a picture of that part of the window,
# when nothing moves there any more, with a pointer at that place of the window.
take() {
    local pointer=()
    seen=
    eventually "the window does not come to rest" is_still "$2" "$3" "$4" $(($5 - clock_height))
    if (($# > 5)); then
        pointer=(-fill white -stroke '#1a1a1a' -strokewidth 1 -draw
            "translate $(scaled $(($7 - $2))),$(scaled $(($8 - $3)))
            scale $QT_SCALE_FACTOR,$QT_SCALE_FACTOR path '${pointers[$6]}'")
    fi
    cut_out_of_screen "${@:2:4}" | convert png:- +repage "${pointer[@]}" -depth 8 -strip \
        -define png:compression-level=9 "$shots/$1.png"
    echo "  $1.png"
}
