// Reads a picture for the board.
#include "board/picturefile.h"

#include "board/scarcememory.h"

#include <QFileInfo>
#include <QImageReader>

QPixmap readPicture(const QString &path)
{
    // Of a device or a pipe there may be no end.
    if (!QFileInfo(path).isFile())
        return {};
    QImageReader reader(path);
    // A telephone stores a photograph as its sensor lies, and beside it how it was held.
    reader.setAutoTransform(true);
    QPixmap pixmap; // stays empty when there is no memory for it
    fitsInMemory([&] { pixmap = QPixmap::fromImageReader(&reader); });
    // A name that ends in "@2x" would have the toolkit show the picture at half its size.
    pixmap.setDevicePixelRatio(1.0);
    return pixmap;
}
