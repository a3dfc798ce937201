# The opened board on the full screen, and back.
# shellcheck shell=bash
# shellcheck disable=SC2154 # desktop/verbs.sh and scripts/tour

echo "A presentation"
present presentar
[[ $(size_of "$window") == "${screen_width}x$screen_height" ]] \
    || fail "the board does not cover the screen"
shot presentacion
keys Escape
eventually "Escape did not end the presentation" is_windowed
on "$board_title"
expect_title "$board_title"
shot despues-de-presentar
