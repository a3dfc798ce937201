# One picture for every tab of the help, as large as the tab shows it.
# shellcheck shell=bash
# shellcheck disable=SC2154 # desktop/verbs.sh and scripts/previews

size=(640 360)
beside_tools=(0 170 "${size[@]}")

start

echo "The cursor"
empty_board
note 140 200 yellow "El ciclo del agua

Objetivo: explicar cómo el agua sube al cielo y vuelve al mar.

Material: hielo, un frasco de vidrio, plumones y la foto del lago.

Duración: dos clases."
photograph 460 200 160
drawing cloud 444 344
drawing rain 452 438
arrow 340 460 444 412 "#ff0000" 5
open_prepared "El ciclo del agua"
# At the right of the button, so that the tool tip leaves the other tools free.
point 40 214
expect_popup "tool tip"
take menuhelp "${beside_tools[@]}" arrow 40 214
close_board

echo "Notes"
empty_board
left=310
for color in grey red orange pink blue; do
    note "$left" 200 "$color" ""
    left=$((left - 45))
done
note 85 200 yellow "Ideas para la clase

- ¿Por qué no se llena el mar?
- ¿De dónde sale la niebla?
- ¿Por qué sabe a sal?"
open_prepared "Ideas"
click "${note_tool[@]}"
click 336 332 3
expect_popup "menu"
point_at_entry 4 6
take postithelp "${beside_tools[@]}" arrow "${pointed[@]}"
keys Escape
click "${cursor_tool[@]}"
close_board

echo "The pen"
empty_board
note 88 200 blue "1. Evaporación

El sol calienta el mar y los lagos.

El agua se vuelve vapor y sube al aire sin que la veamos.

¿Dónde pasa en la casa?

- La ropa que se seca
- El charco del patio
- La olla en la estufa"
drawing sun 520 216
drawing sea 412 430
drawing vapour 424 320
open_prepared "Evaporación"
click "${pen_tool[@]}"
circle=(82 236 110 206 180 194 250 206 262 228 230 246 160 252 98 246 80 230 104 204 150 196)
press "${circle[@]:0:2}"
follow "${circle[@]}"
take pencilhelp "${beside_tools[@]}" cross "${circle[@]: -2}"
release
close_board

echo "Lines"
empty_board
note 75 200 orange "2. Condensación

El vapor se enfría en
lo alto y forma nubes
de gotas pequeñas.

Se ve en un vaso
con hielo."
photograph 446 196 180
drawing cloud 436 432
arrow 300 264 530 292 "#000000" 5
arrow 240 430 438 476 "#ff0000" 9
open_prepared "Condensación"
click 342 269 3
expect_popup "menu"
point_at_entry 3 7
take linehelp "${beside_tools[@]}" arrow "${pointed[@]}"
keys Escape
close_board

echo "Images"
empty_board
photograph 118 204 400
open_prepared "El lago"
click 300 300
press 514 466
follow 514 466 540 478 564 500
take imghelp "${beside_tools[@]}" arrow 564 500
release
close_board

echo "The eraser"
empty_board
note 85 200 grey "3. Precipitación

Las gotas se juntan, pesan más que el aire y caen como lluvia, nieve o granizo.

Vocabulario: rocío, llovizna, chubasco, granizo, escarcha.

¿Cuánto llovió en la semana? Revisar el frasco del patio."
drawing cloud 424 196
drawing rain 430 296
open_prepared "Precipitación"
click "${eraser_tool[@]}"
press 404 288
follow 404 288 450 370 516 452
take borrahelp "${beside_tools[@]}" hand 516 452
release
close_board

echo "Closing"
empty_board
note 150 370 pink "Tarea para el jueves

Dibujar el ciclo completo con las tres etapas.

Explicarlo a alguien de la casa y anotar sus preguntas.

Traer un frasco limpio con tapa."
photograph 500 400 340
arrow 390 600 560 580 "#008000" 5
open_prepared "Tarea"
# At the screen's lower edge the tool tip goes above the pointer, to where the picture shows it.
xdotool windowmove "$window" 0 $((screen_height - $(scaled 700)))
point 40 670
expect_popup "tool tip"
take closehelp 0 340 "${size[@]}" arrow 40 670
close_board

echo "A presentation"
empty_board
note 290 54 yellow "El ciclo del agua

El agua del planeta siempre es la misma: sube, viaja, cae y vuelve a empezar.

Hoy: salimos del lago."
photograph 640 70 250
drawing sea 650 270
arrow 490 194 700 200 "#0000ff" 5
open_prepared "El ciclo del agua"
present
take prehelp 280 0 "${size[@]}"
end
