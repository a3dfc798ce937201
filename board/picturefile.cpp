// Reads a picture for the board.
#include "board/picturefile.h"

#include "board/scarcememory.h"

#include <QFileInfo>

QPixmap readPicture(const QString &path)
{
    QPixmap pixmap;
    // Of a device or a pipe there may be no end.
    if (!QFileInfo(path).isFile() || !fitsInMemory([&] { pixmap.load(path); }))
        return {};
    // A name that ends in "@2x" would have the toolkit show the picture at half its size.
    pixmap.setDevicePixelRatio(1.0);
    return pixmap;
}
