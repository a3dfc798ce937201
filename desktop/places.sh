# The windows' titles, and where things are in them, in the program's pixels from the window's corner.
# shellcheck shell=bash
# shellcheck disable=SC2034 # used by those who source this file

home_title="Orvane Plumara - Inicio"
board_title="Orvane Plumara - Modo Pizarra"
pen_title="Orvane Plumara - Modo Lápiz"
note_title="Orvane Plumara - Modo PostIt de cuadro de texto"
line_title="Orvane Plumara - Modo Linea"
eraser_title="Orvane Plumara - Modo Borrador"
open_title="Abrir proyecto"
save_title="Guardar proyecto como"
image_title="Seleccionar imagen"
unsaved_title="Guardar cambios"
deletion_title="Confirmar eliminación"
progress_title="Eliminando datos"
# Some pages of the installer have a blank at the end of their title.
setup_title="Instalación de Orvane Plumara ?"
removal_title="Desinstalación de Orvane Plumara ?"

window_size=(1200 700) screen_size=(1920 1080)
title_bar=(600 -8)

# The home window
boards_page=(115 128) settings_page=(115 193) help_page=(115 228)
new_board_button=(360 145) open_board_button=(530 145)
first_row=(500 371) second_row=(500 431)
delete_all_button=(377 400)
update_card=(900 300) cancel_update_button=(740 550) start_update_button=(970 550)
# help_tab <number>: the tab's place. The first is the selected one, which is wide; the others stand
# 57 pixels apart at its right.
help_tab() { echo $((450 + 57 * ($1 - 2))) 83; }

# The board window
cursor_tool=(27 210) note_tool=(27 250) pen_tool=(27 290) line_tool=(27 330) image_tool=(27 370)
eraser_tool=(27 410) undo_button=(27 450) redo_button=(27 490) close_button=(27 672)
present_list=(1070 27) save_button=(1167 27)
clock_height=50 # of the strip at the foot of the board in which the time changes

# The toolkit's own file dialog
file_dialog_labels=(4 346 85 50)

# What the pen draws in a test, and the part of the board that it fills. Places at multiples of four
# are whole pixels of the screen at every usual scale.
stroke=(172 200 212 120 260 232 312 112 360 232 412 120 452 200)
stroke_area=(150 90 320 180)
