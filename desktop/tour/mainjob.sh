# The main job: from a new board to the same board opened again.
# shellcheck shell=bash
# shellcheck disable=SC2154 # desktop/verbs.sh and scripts/tour

board_file="$boards/Mi clase.vtrz"
photo=$scratch/foto.jpg
convert -seed 11 -size 320x240 plasma:skyblue-seagreen -blur 0x1 "$photo"

# picture <board> <file>: takes the picture out of a board.
picture() { jq -r '.items[] | select(.type == "image") | .imageData' "$1" | base64 -d >"$2"; }

echo "A new board"
start
shot inicio
create_board
shot pizarra-vacia

echo "A stroke, erased, and back again"
draw_stroke
eventually "the stroke is not to be seen" has_ink "${stroke_area[@]}"
shot trazo
click "${eraser_tool[@]}"
expect_title "$eraser_title"
drag 140 80 300 160 480 260
eventually "the stroke was not erased" has_no_ink "${stroke_area[@]}"
shot borrado
click "${undo_button[@]}"
eventually "undo did not bring the stroke back" has_ink "${stroke_area[@]}"
shot deshacer
click "${redo_button[@]}"
eventually "redo did not erase the stroke again" has_no_ink "${stroke_area[@]}"
shot rehacer
click "${undo_button[@]}"
eventually "undo did not bring the stroke back" has_ink "${stroke_area[@]}"

echo "Two notes"
click "${note_tool[@]}"
expect_title "$note_title"
click 100 330
click 450 330
click "${cursor_tool[@]}"
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
click "${line_tool[@]}"
expect_title "$line_title"
drag 560 120 640 160 760 252
expect_title "$board_title"
click 660 185 3
shot menu-de-linea
keys Down Down Return # Rojo
click 660 185 3
keys Up Return # Grueso
shot flecha

echo "A photograph"
click "${image_tool[@]}"
choose_file "$image_title" "$photo" seleccionar-imagen
on "$board_title"
shot imagen
drag 1116 540 1080 540 1036 540
shot imagen-ajustada

echo "Saving"
save_board "${board_file%.vtrz}" guardar
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
close_board guardar-cambios
sha256sum --status --check <<<"$saved" || fail "closing changed the saved board"

echo "Opening it again"
open_board "$board_file" abrir
eventually "the opened board lacks the stroke" has_ink "${stroke_area[@]}"
shot abierta
save_board "$scratch/copia"
# Same board; the bytes of a picture may differ between two encodings of the same pixels.
content() { jq -S '.items |= (map(del(.imageData)) | sort)' "$1"; }
diff <(content "$scratch/copia.vtrz") <(content "$board_file") \
    || fail "the opened board differs from the saved one"
picture "$scratch/copia.vtrz" "$scratch/copia.png"
cmp <(convert "$scratch/image.png" rgba:) <(convert "$scratch/copia.png" rgba:) \
    || fail "the opened picture differs from the saved one"
