# The windows, whole: the home window with its boards and its help, a board, and its presentation.
# shellcheck shell=bash
# shellcheck disable=SC2154,SC2034 # desktop/verbs.sh and scripts/previews

window_area=(0 0 "${window_size[@]}") screen_area=(0 0 "${screen_size[@]}")

# The list shows where the boards are, so the person lives where people do.
homes=$scratch/homes
boards=$homes/ana/Documents/OrvanePlumara
mkdir -p "$boards"
cat >"$scratch/at-home" <<END
#!/bin/sh
exec "$desktop/previews/at-home" "$homes" ana "$program"
END
chmod +x "$scratch/at-home"
program=$scratch/at-home

echo "A lesson"
empty_board
photograph 80 440 330
note 80 70 yellow "El ciclo del agua

Objetivo: explicar cómo el agua sube al cielo y vuelve al mar.

Material: hielo, un frasco de vidrio, plumones y la foto del lago.

Duración: dos clases."
note 450 70 blue "1. Evaporación

El sol calienta el mar y los lagos.

El agua se vuelve vapor y sube al aire.

¿Dónde pasa en la casa?

- La ropa que se seca
- El charco del patio"
note 820 70 grey "2. Condensación

El vapor se enfría en lo alto y forma nubes de gotas pequeñas.

Experimento: un vaso con hielo se moja por fuera."
drawing sun 640 420
drawing vapour 500 450
drawing sea 470 560
drawing cloud 806 400
drawing rain 812 490
arrow 330 334 500 334 "#0000ff" 5
arrow 700 334 870 334 "#0000ff" 5
arrow 930 312 908 398 "#ff0000" 5
arrow 420 610 330 585 "#008000" 9
# What a window does not show and a presentation does.
note 1220 70 orange "3. Precipitación

Las gotas se juntan, pesan más que el aire y caen como lluvia, nieve o granizo.

¿Cuánto llovió en la semana? Revisar el frasco del patio."
note 1580 70 pink "Tarea para el jueves

Dibujar el ciclo completo con las tres etapas.

Explicarlo a alguien de la casa y anotar sus preguntas.

Traer un frasco limpio con tapa y un poco de arena."
photograph 1230 430 640 -flop -fill '#ff8a4a' -colorize 30
note 80 730 red "Preguntas del grupo

- ¿Por qué no se llena el mar?
- ¿De dónde sale la niebla?
- ¿Por qué sabe a sal?
- ¿Cuánta agua se puede beber?
- ¿A dónde va la del lavabo?"
note 450 730 yellow "Palabras nuevas

Rocío: gotas que deja el aire frío de la noche.

Cuenca: la tierra que lleva su lluvia al mismo río.

Manantial: agua que brota sola."
note 820 730 blue "Para la próxima clase

Hacer un filtro de agua en equipos de cuatro.

Registrar el color antes y después, y dibujar cada capa."
arrow 1070 334 1250 334 "#0000ff" 5
keep_board "El ciclo del agua"
for name in "Reunión del equipo" "Plan de estudios" "Mapa de ideas"; do
    cp "$boards/El ciclo del agua.vtrz" "$boards/$name.vtrz"
done
touch -d "2026-06-18 17:20" "$boards/Reunión del equipo.vtrz"
touch -d "2026-05-05 14:07" "$boards/Plan de estudios.vtrz"
touch -d "2026-02-11 09:30" "$boards/Mapa de ideas.vtrz"

start
take inicio "${window_area[@]}"
click "${help_page[@]}"
take ayuda "${window_area[@]}"
click "${boards_page[@]}"
open_row "${first_row[@]}"
take pizarra "${window_area[@]}"
present
take presentacion "${screen_area[@]}"
end

echo "What a board is made of"
detail=(60 170 640 360)
start
click "${settings_page[@]}"
take ajustes "${window_area[@]}"
click "${boards_page[@]}"
create_board
click "${note_tool[@]}"
click 120 200
click "${cursor_tool[@]}"
click 180 222
keys ctrl+a
write "Tarea para el jueves: traer un frasco limpio con tapa."
click 600 150
click 380 330 3
expect_popup "menu"
point_at_entry 4 6
take nota "${detail[@]}" arrow "${pointed[@]}"
keys Escape
click "${line_tool[@]}"
drag 440 300 540 250 640 200
click 500 270 3
expect_popup "menu"
point_at_entry 3 7
take flecha "${detail[@]}" arrow "${pointed[@]}"
keys Escape
click "${close_button[@]}"
on "$unsaved_title"
IFS=x read -r width height < <(size_of "$window")
take pregunta 0 0 "$width" "$height"
keys Tab space # No
see_home
create_board
convert "$lake" -resize 340 "$scratch/lago.jpg"
click "${image_tool[@]}"
choose_file "$image_title" "$scratch/lago.jpg"
on "$board_title"
drag 900 540 700 440 310 350
take imagen "${detail[@]}" arrow 535 456
keys alt+F4
ends_with 0

# The pages on which they stand are white as well.
for name in inicio ayuda pizarra presentacion ajustes nota flecha imagen pregunta; do
    mogrify -bordercolor '#c2c2c2' -border 1 -strip "$shots/$name.png"
done
