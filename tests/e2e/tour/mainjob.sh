# shellcheck shell=bash
# shellcheck disable=SC2154 # what scripts/tour sets
# The main job: from a new board to the same board opened again.

# Where things are, in pixels of their window. What is drawn and checked afterwards stands at
# multiples of four, which are whole pixels of the screen at every usual scale.
new_board=(360 145) open_board=(530 145)
cursor=(27 210) note=(27 250) pen=(27 290) line=(27 330) image=(27 370) eraser=(27 410)
undo=(27 450) redo=(27 490) save=(1167 27) close=(27 672)

photo=$scratch/foto.jpg
convert -seed 11 -size 320x240 plasma:skyblue-seagreen -blur 0x1 "$photo"

# picture <board> <file>: takes the picture out of a board.
picture() { jq -r '.items[] | select(.type == "image") | .imageData' "$1" | base64 -d >"$2"; }

echo "A new board"
start
shot inicio
click "${new_board[@]}"
on "$board_title"
eventually "the home window is still there" is_gone "$home_title"
shot pizarra-vacia

echo "A stroke, erased, and back again"
stroke=(150 90 320 180)
click "${pen[@]}"
expect_title "Orvane Plumara - Modo Lápiz"
drag 172 200 212 120 260 232 312 112 360 232 412 120 452 200
expect_title "$board_title"
has_ink "${stroke[@]}" || fail "the stroke is not to be seen"
shot trazo
click "${eraser[@]}"
expect_title "Orvane Plumara - Modo Borrador"
drag 140 80 300 160 480 260
eventually "the stroke was not erased" has_no_ink "${stroke[@]}"
shot borrado
click "${undo[@]}"
eventually "undo did not bring the stroke back" has_ink "${stroke[@]}"
shot deshacer
click "${redo[@]}"
eventually "redo did not erase the stroke again" has_no_ink "${stroke[@]}"
shot rehacer
click "${undo[@]}"
eventually "undo did not bring the stroke back" has_ink "${stroke[@]}"

echo "Two notes"
click "${note[@]}"
expect_title "Orvane Plumara - Modo PostIt de cuadro de texto"
click 100 330
click 450 330
click "${cursor[@]}"
expect_title "$board_title"
click 180 352
keys ctrl+a
write "¿Qué dirán los niños? ¡Más sol!"
click 530 352
keys ctrl+a
write "Traer el mapa y los colores"
click 600 610 3
shot colores-de-nota
keys Down Down Down Down Return # Celeste
shot notas

echo "An arrow"
click "${line[@]}"
expect_title "Orvane Plumara - Modo Linea"
drag 560 120 640 160 760 252
expect_title "$board_title"
click 660 185 3
shot menu-de-linea
keys Down Down Return # Rojo
click 660 185 3
keys Up Return # Grueso
shot flecha

echo "A photograph"
click "${image[@]}"
on "Seleccionar imagen"
shot seleccionar-imagen
write "$(named "$photo")"
keys Return
on "$board_title"
shot imagen
drag 1116 540 1080 540 1036 540
shot imagen-ajustada

echo "Saving"
click "${save[@]}"
on "Guardar proyecto como"
write "$(named "${board_file%.vtrz}")"
shot guardar
keys Return
eventually "no board was saved" test -s "$board_file"
on "$board_title"
shot guardada

expect_json "$board_file" 'keys == ["items"] and (.items | length) == 5'
expect_json "$board_file" '[.items[].type] | sort == ["arrow", "freedraw", "image", "postit", "postit"]'
expect_json "$board_file" '[.items[] | select(.type == "postit") | [.text, .color]] | sort
    == [["Traer el mapa y los colores", 1], ["¿Qué dirán los niños? ¡Más sol!", 0]]'
expect_json "$board_file" '.items[] | select(.type == "arrow")
    | .color == "#ff0000" and .width == 9 and .x1 == 560 and .y1 == 120 and .x2 == 760 and .y2 == 252'
expect_json "$board_file" '.items[] | select(.type == "freedraw")
    | (.path | length) > 3 and .path[0] == {type: 0, x: 172, y: 200} and .path[-1].x == 452'
expect_json "$board_file" '.items[] | select(.type == "image") | .x == 800 and .y == 420'
picture "$board_file" "$scratch/image.png"
[[ $(identify -format '%m %w' "$scratch/image.png") == "PNG 241" ]] || fail "the image was not resized"

echo "Closing"
saved=$(sha256sum "$board_file")
click "${close[@]}"
on "Guardar cambios"
shot guardar-cambios
keys Tab space # No
on "$home_title"
eventually "the board window is still there" is_gone "$board_title"
sha256sum --status --check <<<"$saved" || fail "closing changed the saved board"

echo "Opening it again"
click "${open_board[@]}"
on "Abrir proyecto"
write "$(named "$board_file")"
shot abrir
keys Return
on "$board_title"
has_ink "${stroke[@]}" || fail "the opened board lacks the stroke"
shot abierta
click "${save[@]}"
on "Guardar proyecto como"
write "$(named "$scratch/copia")"
keys Return
eventually "no copy was saved" test -s "$scratch/copia.vtrz"
# Same board; the bytes of a picture may differ between two encodings of the same pixels.
content() { jq -S '.items |= (map(del(.imageData)) | sort)' "$1"; }
diff <(content "$scratch/copia.vtrz") <(content "$board_file") \
    || fail "the opened board differs from the saved one"
picture "$scratch/copia.vtrz" "$scratch/copia.png"
cmp <(convert "$scratch/image.png" rgba:) <(convert "$scratch/copia.png" rgba:) \
    || fail "the opened picture differs from the saved one"
