#include "board/windowlook.h"

#include <QFile>
#include <QFontDatabase>
#include <QWidget>

using namespace Qt::Literals::StringLiterals;

void registerFont()
{
    QFontDatabase::addApplicationFont(u":/fonts/Montserrat-Regular.ttf"_s);
}

void applyWindowLook(QWidget &window)
{
    registerFont();
    QFile style(u":/styles/window.qss"_s);
    if (style.open(QIODevice::ReadOnly))
        window.setStyleSheet(QString::fromUtf8(style.readAll()));
}
