// Dresses a window: font, style sheet, pictures by scale, names for screen readers.
#include "look/windowlook.h"

#include "look/fading.h"
#include "look/focusmark.h"
#include "look/picturelabel.h"
#include "look/toolkitdialogs.h"
#include "look/tooltips.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QLabel>

using namespace Qt::Literals::StringLiterals;

namespace {

QString programFamily()
{
    return u"Montserrat"_s;
}

QString styleSheet(const QString &name)
{
    QFile sheet(u":/styles/%1.qss"_s.arg(name));
    return sheet.open(QIODevice::ReadOnly) ? QString::fromUtf8(sheet.readAll()) : QString();
}

/// What no window's own sheet says, and what the toolkit's dialogs wear.
void dressProgram()
{
    if (!qApp->styleSheet().isEmpty())
        return;
    QString sheet = styleSheet(u"program"_s);
#ifndef Q_OS_WIN
    // The toolkit's own have 32 pixels, and are blown up where pixels are fine. Windows has its own.
    sheet += styleSheet(u"dialogicons"_s);
#endif
    qApp->setStyleSheet(sheet);
}

/// Menus are windows of their own, which no style sheet of the program reaches. A system's font for
/// menus may hold black and white drawings of some of the circles that the note's menu shows in
/// their colours; the program's font holds none, and so leaves them all to the coloured ones.
void dressMenus()
{
    QFont font = QApplication::font("QMenu");
    font.setFamilies({programFamily(), u"Segoe UI Emoji"_s, u"Noto Color Emoji"_s});
    QApplication::setFont(font, "QMenu");
}

/// Those of pages that are not seen at first wait until they are.
void showPictures(const QWidget &window)
{
    const auto labels = window.findChildren<QLabel *>();
    for (auto *label : labels) {
        if (!dynamic_cast<PictureLabel *>(label))
            showPicture(label);
    }
}

/// What has a tool tip shows a picture and no words: it is read out as its tool tip.
void nameByToolTips(const QWidget &window)
{
    const auto widgets = window.findChildren<QWidget *>();
    for (auto *widget : widgets) {
        if (!widget->toolTip().isEmpty())
            widget->setAccessibleName(widget->toolTip());
    }
}

void fadeDisabledButtons(const QWidget &window)
{
    const auto buttons = window.findChildren<QAbstractButton *>();
    for (auto *button : buttons) {
        // What takes no focus is no button to a person.
        if (button->focusPolicy() != Qt::NoFocus)
            fadeWhileDisabled(*button);
    }
}

} // namespace

void registerFont()
{
    // Each registration takes half a megabyte, and none replaces another.
    static int registration = -1;
    if (!QFontDatabase::applicationFontFamilies(registration).contains(programFamily()))
        registration = QFontDatabase::addApplicationFont(u":/fonts/Montserrat-Regular.ttf"_s);
    // Only Windows has that font. Elsewhere the text of a note would look different, and break
    // into other lines, on every machine.
    QFont::insertSubstitution(u"Segoe UI"_s, programFamily());
}

void applyWindowStyle(QWidget &window)
{
    registerFont();
    dressProgram();
    window.setStyleSheet(styleSheet(u"window"_s));
    dressMenus();
    dressToolTips();
    mendToolkitDialogs();
    markKeyboardFocus();
}

void dressWidgets(QWidget &window)
{
    showPictures(window);
    nameByToolTips(window);
    fadeDisabledButtons(window);
}

void applyWindowLook(QWidget &window)
{
    applyWindowStyle(window);
    dressWidgets(window);
}
