# shellcheck shell=bash
# shellcheck disable=SC2154 # what scripts/tour sets
# The update advisor; only where the tests were built, because it takes a server that announces.

announcing=$(dirname "$program")/tests/e2e/announcingplumara
cancel_update=(740 550) start_update=(970 550)

advisor_tour() {
    echo "A newer version"
    "$announcing" &
    pid=$!
    on "$home_title"
    # The card is white where the page below it is grey.
    eventually "the update advisor does not come" is_white 900 300
    shot aviso-de-actualizacion
    click "${cancel_update[@]}"
    eventually "the update advisor does not go" is_grey 900 300
    click "${settings[@]}"
    shot despues-de-cancelar
    keys alt+F4
    eventually "the program does not end" is_dead "$pid"

    "$announcing" &
    pid=$!
    on "$home_title"
    eventually "the update advisor does not come" is_white 900 300
    click "${start_update[@]}"
    eventually "the program does not end for its update" is_dead "$pid"
}

color_at() { cut_out "$1" "$2" 1 1 | convert png:- -format '%[hex:p{0,0}]' info:; }
is_white() { [[ $(color_at "$@") == FFFFFF* ]]; }
is_grey() { [[ $(color_at "$@") == F0F0F0* ]]; }

if [[ -x $announcing ]]; then
    advisor_tour
else
    echo "No update advisor: $announcing was not built"
fi
