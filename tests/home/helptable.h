// What the tabs of the help page hold, row by row.
#pragma once

/// What a help tab holds. \c texts and \c previews end with a null pointer.
struct HelpRow
{
    const char *tab;
    const char *title;
    const char *icon;
    const char *texts[4];
    const char *previews[3];
};

constexpr HelpRow helpRows[] = {
    {"Modo cursor",
     "Modo Cursor",
     ":/img/cursor.png",
     {"El modo Cursor, será su función por defecto dentro de la pizarra de Orvane Plumara.\n"
      "\n"
      "Esta es función de referencia inicial, que usara el cursor de su sistema para poder "
      "seleccionar la acción o elemento que necesite del menú lateral dentro de la pizarra de "
      "Orvane Plumara.",
      nullptr},
     {":/img/menuhelp.png", nullptr}},
    {"Modo Texto",
     "Modo Cuadro de Texto",
     ":/img/texto.png",
     {"El modo Texto, le permite ingresar cuadros de texto similares a los de un Post-It que podrá "
      "personalizar en 6 colores difernetes y poder diferenciarlos.\n"
      "\n"
      "Esta función, le permite hacer referencias o anotaciones a un elemento relacionado o "
      "insertar comentarios en su pizarra con un maximo de 300 caracteres.",
      nullptr},
     {":/img/postithelp.png", nullptr}},
    {"Modo Lápiz",
     "Modo Lápiz",
     ":/img/lapiz.png",
     {"El modo Lápiz le permite hacer trazos libres por toda la pizarra, similar a un plumón, "
      "podrá hacer los trazos o dibujos libres con el Modo Lápiz.\n"
      "\n"
      "Esta función, le permite, ya sea para hacer subrayados, anotaciones, o resalto de textos o "
      "elementos.",
      nullptr},
     {":/img/pencilhelp.png", nullptr}},
    {"Trazo de Línea",
     "Modo Inserción de Línea",
     ":/img/linea.png",
     {"El Modo de Trazo de Línea, le permite realizar referencias visuales entre varios elementos "
      "o hacer conexiones de cuadros de texto con imagenes, y viceversa.\n"
      "\n"
      "También le permite personalizar el grosor y color de la linea, hasta en 4 colores "
      "disponibles y 3 estilos de grosor únicos, las cuales, le servirán de ayuda y podrá "
      "diferenciar cada trazo que haga.",
      nullptr},
     {":/img/linehelp.png", nullptr}},
    {"Inserción de Imagen",
     "Modo Inserción de Imagen",
     ":/img/imagen.png",
     {"La Inserción de Imagen, le permite colocar imagenes en su pizarra, que podrá usar como "
      "referencias o ejemplos visuales.\n"
      "\n"
      "También le permite ajustar el tamaño de su imagen y su ubicación mediante el arrastre del "
      "elemento y ubicarlo en donde usted desee. (Siempre y cuando la imagen cumpla con los "
      "formatos JPG o PNG).",
      nullptr},
     {":/img/imghelp.png", nullptr}},
    {"Modo Borrador",
     "Modo Borrador",
     ":/img/borrador.png",
     {"El Modo Borrador le permite eliminar todo elemento posible en su pizarra.\n"
      "\n"
      "Ya sea por un error de trazo, o una imagen no deseada, etc. El Modo Borrador, le permitirá "
      "eliminar esos elementos con solo mantener pulsado el clic izquierdo y arrastrar el mouse, "
      "como si fuese un borrador de pizarrón.",
      nullptr},
     {":/img/borrahelp.png", nullptr}},
    {"Acciones de cambio",
     "Acción Deshacer / Acción Rehacer",
     ":/img/deshacer.png",
     {"Las acciones de cambio le permiten realizar ajustes necesarios en su pizarra.\n"
      "\n"
      "Ya sea que quiera deshacer o revertir cambios realizados, estos cambios se pueden hacer, "
      "hasta un máximo de 10 pasos por acción.",
      "Acción Deshacer, le permite eliminar el último cambio que realizó en la pizarra.",
      "Acción Rehacer, le permite reconstruir el último cambio que realizó en la pizarra.",
      nullptr},
     {":/img/deshacer.png", ":/img/rehacer.png", nullptr}},
    {"Función de salida",
     "Función de salida",
     ":/img/closeboard.png",
     {"El icono de salida le permite cerrar la pizarra de forma segura y volver al menú "
      "principal.\n"
      "\n"
      "Por seguridad, el botón de salida, se encuentra localizado en la parte infrerior izquierda "
      "como referencia en caso de usar la pizarra en pantalla completa.",
      nullptr},
     {":/img/closehelp.png", nullptr}},
    {"Presentación",
     "Presentación",
     ":/img/presentation.png",
     {"El Modo de Presentación, le permite ampliar y presentar su pizarra en pantalla completa. Ya "
      "sea que realice una presentación o un trabajo en equipo, el Modo de Presentación, le "
      "ayudará a tener un campo amplio para sus ideas.\n"
      "\n"
      "(La función de Presentación en pantalla completa, funciona mejor en proyectores o pantallas "
      "táctiles en resolución máxima de 1920x1080 [Relación 16:9]).",
      nullptr},
     {":/img/prehelp.png", nullptr}},
};
