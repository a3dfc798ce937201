// The six tool modes, and how the board window shows each.
#pragma once

#include "board/boardwindow.h"

#include <QAbstractButton>

#include <algorithm>

struct Mode
{
    const char *button;
    void (BoardWindow::*slot)();
    const char16_t *title;
    Qt::CursorShape cursor;
};

inline constexpr Mode modes[] = {
    {"ModoCursor", &BoardWindow::setCursorMode, u"Orvane Plumara - Modo Pizarra", Qt::ArrowCursor},
    {"ModoPostIt", &BoardWindow::setPostItMode, u"Orvane Plumara - Modo PostIt de cuadro de texto",
     Qt::IBeamCursor},
    {"ModoLapiz", &BoardWindow::setPenMode, u"Orvane Plumara - Modo Lápiz", Qt::CrossCursor},
    {"ModoLinea", &BoardWindow::setLineMode, u"Orvane Plumara - Modo Linea", Qt::CrossCursor},
    {"ModoImagen", &BoardWindow::setImageMode, u"Orvane Plumara - Modo Imagen", Qt::BusyCursor},
    {"ModoBorrador", &BoardWindow::setEraseMode, u"Orvane Plumara - Modo Borrador",
     Qt::PointingHandCursor},
};

inline const Mode &modeOf(const QByteArray &button)
{
    return *std::ranges::find_if(modes, [&](const Mode &mode) { return mode.button == button; });
}

/// The names of the mode buttons of \a board that are checked.
inline QList<QByteArray> checkedButtons(const BoardWindow &board)
{
    QList<QByteArray> names;
    for (const auto &mode : modes) {
        if (board.findChild<QAbstractButton *>(QString::fromLatin1(mode.button))->isChecked())
            names << mode.button;
    }
    return names;
}
