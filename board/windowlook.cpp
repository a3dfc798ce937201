#include "board/windowlook.h"

#include <QFile>
#include <QFontDatabase>
#include <QWidget>

using namespace Qt::Literals::StringLiterals;

void applyWindowLook(QWidget &window)
{
    QFontDatabase::addApplicationFont(u":/fonts/Montserrat-Regular.ttf"_s);
    QFile style(u":/styles/window.qss"_s);
    if (style.open(QIODevice::ReadOnly))
        window.setStyleSheet(QString::fromUtf8(style.readAll()));
}
