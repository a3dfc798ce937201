// Gives nothing to see for whatever a text names.
#include "items/notedocument.h"

#include <QImage>

QVariant NoteDocument::loadResource(int type, const QUrl & /*name*/)
{
    if (type != ImageResource)
        return QByteArray();
    // Without a picture, the toolkit would look for one itself.
    QImage nothing(1, 1, QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::transparent);
    return nothing;
}
