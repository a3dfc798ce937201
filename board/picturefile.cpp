// Reads a picture for the board.
#include "board/picturefile.h"

QPixmap readPicture(const QString &path)
{
    QPixmap pixmap(path);
    // A name that ends in "@2x" would have the toolkit show the picture at half its size.
    pixmap.setDevicePixelRatio(1.0);
    return pixmap;
}
