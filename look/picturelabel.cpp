// Gives labels their pictures, in the drawing that fits the screen.
#include "look/picturelabel.h"

#include <QApplication>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The picture at \a path as it is drawn for screens with fine pixels.
QString finePicture(const QString &path)
{
    QString fine(path);
    return fine.insert(path.lastIndexOf(u'.'), u"@2x"_s);
}

} // namespace

// A picture that a form gives to a label is always the coarse one. The fine one is right wherever one
// of the screens is fine: a label scales it down for the screen that it stands on.
void showPicture(QLabel *label)
{
    const QString path = label->property("picture").toString();
    if (!path.isEmpty())
        label->setPixmap(QPixmap(qApp->devicePixelRatio() > 1.0 ? finePicture(path) : path));
}

void PictureLabel::showEvent(QShowEvent *event)
{
    if (pixmap().isNull())
        showPicture(this);
    QLabel::showEvent(event);
}
