# The update advisor; only where the tests were built, because it takes a server that announces.
# shellcheck shell=bash
# shellcheck disable=SC2154 # desktop/verbs.sh and scripts/tour

announcing=$(dirname "$program")/tests/e2e/announcingplumara

advisor_tour() {
    echo "A newer version"
    program=$announcing start
    # The card is white where the page below it is grey.
    eventually "the update advisor does not come" is_white "${update_card[@]}"
    shot aviso-de-actualizacion
    click "${cancel_update_button[@]}"
    eventually "the update advisor does not go" is_grey "${update_card[@]}"
    click "${settings_page[@]}"
    shot despues-de-cancelar
    end

    program=$announcing start
    eventually "the update advisor does not come" is_white "${update_card[@]}"
    click "${start_update_button[@]}"
    eventually "the program does not end for its update" is_dead "$pid"
}

if [[ -x $announcing ]]; then
    advisor_tour
else
    echo "No update advisor: $announcing was not built"
fi
