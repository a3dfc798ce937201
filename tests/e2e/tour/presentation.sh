# shellcheck shell=bash
# shellcheck disable=SC2154 # what scripts/tour sets
# The opened board on the full screen, and back.

present=(1070 27)

is_full_screen() { xprop -id "$(find_window "$board_title")" _NET_WM_STATE | grep -q FULLSCREEN; }
is_windowed() { is_shown "$board_title" && ! is_full_screen; }

echo "A presentation"
on "$board_title"
click "${present[@]}"
shot presentar
keys Down Return
eventually "the board does not fill the screen" is_full_screen
on "$board_title"
[[ $(xdotool getwindowgeometry --shell "$window") == *"WIDTH=$screen_width"*"HEIGHT=$screen_height"* ]] \
    || fail "the board does not cover the screen"
shot presentacion
keys Escape
eventually "Escape did not end the presentation" is_windowed
on "$board_title"
expect_title "$board_title"
shot despues-de-presentar
