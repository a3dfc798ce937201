# The home window: recent boards, help, settings, and the end of all data.
# shellcheck shell=bash
# shellcheck disable=SC2154 # desktop/verbs.sh and scripts/tour

echo "Recent boards"
close_board
end

for name in "Reunión del equipo" "Plan de estudios" "Mapa de ideas"; do
    cp "$board_file" "$boards/$name.vtrz"
done
touch -d "2026-03-05 14:07" "$boards/Plan de estudios.vtrz"
touch -d "2026-02-11 09:30" "$boards/Mapa de ideas.vtrz"
touch -d "1 hour ago" "$boards/Reunión del equipo.vtrz"
touch -d "2 hours ago" "$board_file"
start
shot recientes
open_row "${second_row[@]}"
shot abierta-de-la-lista
eventually "the board from the list lacks the stroke" has_ink "${stroke_area[@]}"
close_board
open_row "${first_row[@]}"
close_board

echo "Help"
click "${help_page[@]}"
shot ayuda-1
for tab in 7 9; do
    # shellcheck disable=SC2046 # its two words are the place
    click $(help_tab "$tab")
    shot "ayuda-$tab"
done

echo "Settings, and the end of all data"
click "${settings_page[@]}"
shot ajustes
click "${delete_all_button[@]}"
on "$deletion_title"
shot reiniciar-datos
keys Escape
on "$home_title"
[[ -s $board_file ]] || fail "cancelling deleted the boards"
click "${delete_all_button[@]}"
on "$deletion_title"
keys Tab space # Aceptar
on "$progress_title"
keys Escape alt+F4
# At its end the boards are gone before it is.
is_shown "$progress_title" || [[ ! -e $boards ]] || fail "the progress can be sent away"
shot eliminando-datos
eventually "the program does not end after deleting all data" is_dead "$pid"
[[ ! -e $boards ]] || fail "the data folder is still there"
