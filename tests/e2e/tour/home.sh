# shellcheck shell=bash
# shellcheck disable=SC2154 # what scripts/tour sets
# The home window: recent boards, help, settings, and the end of all data.

first_row=(500 371) second_row=(500 431)
settings=(115 193) help=(115 228) delete_all=(377 400)
# The tabs of the help page; the selected one is wide, the others show their icons only.
help_kinds=(1 7 9)

echo "Recent boards"
click "${close[@]}"
on "Guardar cambios"
keys Tab space # No
on "$home_title"
keys alt+F4
eventually "the program does not end" is_dead "$pid"

for name in "Reunión del equipo" "Plan de estudios" "Mapa de ideas"; do
    cp "$board_file" "$boards/$name.vtrz"
done
touch -d "2026-03-05 14:07" "$boards/Plan de estudios.vtrz"
touch -d "2026-02-11 09:30" "$boards/Mapa de ideas.vtrz"
touch -d "1 hour ago" "$boards/Reunión del equipo.vtrz"
touch -d "2 hours ago" "$board_file"
start
shot recientes
click "${second_row[@]}"
on "$board_title"
shot abierta-de-la-lista
has_ink "${stroke[@]}" || fail "the board from the list lacks the stroke"
click "${close[@]}"
on "Guardar cambios"
keys Tab space # No
on "$home_title"
click "${first_row[@]}"
on "$board_title"
click "${close[@]}"
on "Guardar cambios"
keys Tab space # No
on "$home_title"

echo "Help"
click "${help[@]}"
for tab in "${help_kinds[@]}"; do
    # The tabs right of the selected one, which is wide, stand 57 pixels apart.
    ((tab == 1)) || click $((450 + 57 * (tab - 2))) 83
    shot "ayuda-$tab"
done

echo "Settings, and the end of all data"
click "${settings[@]}"
shot ajustes
click "${delete_all[@]}"
on "Confirmar eliminación"
shot reiniciar-datos
keys Escape
on "$home_title"
[[ -s $board_file ]] || fail "cancelling deleted the boards"
click "${delete_all[@]}"
on "Confirmar eliminación"
keys Tab space # Aceptar
on "Eliminando datos"
keys Escape alt+F4
is_shown "Eliminando datos" || fail "the progress can be sent away"
shot eliminando-datos
eventually "the program does not end after deleting all data" is_dead "$pid"
[[ ! -e $boards ]] || fail "the data folder is still there"
