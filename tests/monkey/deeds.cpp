// What a person does with each kind of window.
#include "tests/monkey/monkey.h"

#include "board/boardwindow.h"
#include "history/boardsnapshot.h"
#include "home/mainwindow.h"
#include "items/resizablepixmapitem.h"
#include "painting/canvasview.h"
#include "tests/monkey/logbook.h"
#include "tests/monkey/promises.h"
#include "tests/monkey/savedboard.h"
#include "tests/support/board/toolmodes.h"
#include "tests/support/files/files.h"
#include "tests/support/system/virtualclock.h"

#include <QApplication>
#include <QComboBox>
#include <QDirIterator>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace {

/// As the log has it.
QString at(QPoint place)
{
    return u"%1,%2"_s.arg(place.x()).arg(place.y());
}

QString nameOf(const QObject &object)
{
    return object.objectName().isEmpty() ? QString::fromLatin1(object.metaObject()->className())
                                         : object.objectName();
}

constexpr Qt::Key keys[] = {Qt::Key_Tab,       Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Space,
                            Qt::Key_Space,     Qt::Key_Return, Qt::Key_Escape,  Qt::Key_Left,
                            Qt::Key_Right,     Qt::Key_Up,     Qt::Key_Down,    Qt::Key_Delete,
                            Qt::Key_Backspace, Qt::Key_Home,   Qt::Key_End,     Qt::Key_PageUp,
                            Qt::Key_PageDown,  Qt::Key_Menu,   Qt::Key_F10,     Qt::Key_Alt};
constexpr const char *interruptions[] = {
    "undoMode",     "redoMode",     "setCursorMode", "setPostItMode", "setPenMode", "setLineMode",
    "setEraseMode", "setImageMode", "saveBoard",     "saveBoardAs",   "closeBoard"};
constexpr Qt::Key lettersWithControl[] = {Qt::Key_A, Qt::Key_C, Qt::Key_V, Qt::Key_X,
                                          Qt::Key_Z, Qt::Key_Y, Qt::Key_S, Qt::Key_Backspace};

Qt::MouseButton anyButton(Dice &dice)
{
    constexpr Qt::MouseButton buttons[] = {
        Qt::LeftButton, Qt::LeftButton, Qt::LeftButton,  Qt::LeftButton,  Qt::LeftButton,
        Qt::LeftButton, Qt::LeftButton, Qt::RightButton, Qt::RightButton, Qt::MiddleButton};
    return dice.of(buttons);
}

QRect middleOf(const QWidget &window)
{
    return window.rect().adjusted(90, 70, -110, -70);
}

} // namespace

void Monkey::useBoard(Dice &dice)
{
    BoardWindow &window = *board();
    const int what = dice.below(100);
    if (what < 24) {
        draw(dice);
    } else if (what < 34) {
        edit(dice);
    } else if (what < 44) {
        chooseTool(dice);
    } else if (what < 52) {
        callSlot(window, dice.oneIn(2) ? "undoMode" : "redoMode");
    } else if (what < 54) {
        goThroughHistory();
    } else if (what < 57) {
        callSlot(window, "setImageMode");
    } else if (what < 60) {
        saveBoard(dice);
    } else if (what < 61) {
        clickButton(window, u"CloseBoardBtn"_s);
    } else if (what < 62) {
        callSlot(window, "closeBoard");
    } else if (what < 64) {
        present(dice);
    } else if (what < 66) {
        constexpr const char *slotsOfHome[] = {
            "openProject",        "startProject", "restoreWindow", "showProjects",
            "NavSettings",        "NavHelp",      "NavMain",       "showUpdateMessage",
            "closeUpdateMessage", "checkVersion"};
        callSlot(*home, dice.of(slotsOfHome));
    } else {
        useAnyWindow(window, dice);
    }
}

void Monkey::useHome(Dice &dice)
{
    const int what = dice.below(100);
    if (what < 25) {
        clickAny(*home, dice);
    } else if (what < 40) {
        clickButton(*home, u"NewProject"_s);
    } else if (what < 46) {
        clickButton(*home, u"ImportProject"_s);
    } else if (what < 54) {
        say(u"row"_s);
        home->NavMain();
        auto *const list = home->findChild<QListWidget *>(u"listWidget"_s);
        if (list->count() > 0) {
            const QRect row = list->visualItemRect(list->item(dice.below(list->count())));
            hand.click(*home, Qt::LeftButton, list->viewport()->mapTo(home, row.center()));
        }
    } else if (what < 66) {
        constexpr const char *names[] = {
            "NavMain",           "NavSettings",        "NavHelp",
            "showUpdateMessage", "closeUpdateMessage", "animateCacheClear",
            "redoFolder",        "showProjects",       "checkVersion",
            "restoreWindow"};
        callSlot(*home, dice.of(names));
    } else if (what < 69) {
        say(u"spread"_s);
        litter.spread(homeFolder, dataFolder);
        home->showProjects();
    } else if (what < 71) {
        say(u"lock"_s);
        Litter::lock(dataFolder, true);
    } else if (what < 73) {
        say(u"unlock"_s);
        Litter::lock(dataFolder, false);
    } else if (what < 75) {
        callSlot(*home, "deleteAll");
    } else if (what < 76) {
        callSlot(*home, "launchUpdater");
    } else if (what < 80) {
        say(u"close"_s);
        closeByFrame(*home);
    } else {
        useAnyWindow(*home, dice);
    }
}

void Monkey::useAnyWindow(QWidget &window, Dice &dice)
{
    const QPoint place =
        dice.oneIn(3) ? dice.pointIn(window.rect()) : dice.pointIn(middleOf(window));
    const int what = dice.below(100);
    if (what < 14) {
        const auto button = anyButton(dice);
        say(u"press %1 %2"_s.arg(button).arg(at(place)));
        hand.press(window, button, place);
    } else if (what < 34) {
        say(u"release "_s + at(place));
        hand.releaseAll(window, place);
    } else if (what < 46) {
        moveAbout(window, dice);
    } else if (what < 52) {
        say(u"double click "_s + at(place));
        hand.doubleClick(window, place);
    } else if (what < 56) {
        const QPoint angle(dice.below(3) * 120 - 120, dice.below(9) * 120 - 480);
        const auto modifiers = dice.oneIn(4) ? Qt::ControlModifier : Qt::NoModifier;
        say(u"wheel "_s + at(angle));
        hand.turnWheel(window, place, angle, modifiers);
    } else if (what < 68) {
        typeAnything(window, dice);
    } else if (what < 72) {
        dragAnything(window, dice);
    } else if (what < 75) {
        const QPoint end = dice.pointIn(window.rect());
        say(u"touch %1 %2"_s.arg(at(place), at(end)));
        hand.touch(window, place, end);
    } else if (what < 78) {
        say(u"compose"_s);
        Hand::compose(dice.oneIn(2) ? u"´"_s : QString(), dice.oneIn(2) ? u"á日本"_s : QString());
    } else if (what < 84) {
        clickAny(window, dice);
    } else if (what < 90) {
        changeState(window, dice);
    } else {
        letTimePass(dice);
    }
}

/// Starts the program once more, as the one that runs hears of it.
void Monkey::startAgain(Dice &dice)
{
    const QString path = dice.oneIn(4) ? QString() : dice.of(litter.boards());
    say(u"start again "_s + path);
    home->answerStart(path);
}

void Monkey::moveAbout(QWidget &window, Dice &dice)
{
    // Of a board that arrives meanwhile and takes the place of this one, the items are others.
    const auto items = [this] {
        return board() ? canvasOf(*board()).scene()->items() : QList<QGraphicsItem *>();
    };
    const auto places = [&items] {
        QList<QRectF> all;
        for (const auto *const item : items()) {
            const bool isImage = dynamic_cast<const ResizablePixmapItem *>(item) != nullptr;
            all << QRectF(item->pos(), isImage ? item->boundingRect().size() : QSizeF());
        }
        return all;
    };
    const auto present = items();
    const auto before = places();
    const int moves = 1 + dice.below(4);
    for (int i = 0; i < moves; ++i) {
        const QPoint there = dice.pointIn(window.rect());
        say(u"move "_s + at(there));
        hand.move(window, there);
    }
    if (!hand.held() && items() == present && places() != before)
        Logbook::complain(u"nothing follows the pointer without a button"_s);
}

/// A gesture with a tool.
void Monkey::draw(Dice &dice)
{
    BoardWindow &window = *board();
    constexpr const char *tools[] = {"ModoLapiz",  "ModoLapiz",    "ModoLinea", "ModoLinea",
                                     "ModoPostIt", "ModoBorrador", "ModoCursor"};
    const QByteArray tool = dice.of(tools);
    const QPoint place = dice.pointIn(middleOf(window));
    say(u"draw %1 %2"_s.arg(QString::fromLatin1(tool), at(place)));
    (window.*modeOf(tool).slot)();
    drag(place, {-60, -50, 130, 110}, dice);
}

/// Presses at \a place and moves on from there, each time by as much as \a reach says; sometimes something
/// comes in between, and not always the button is let go.
void Monkey::drag(QPoint place, const QRect &reach, Dice &dice)
{
    const QPointer<BoardWindow> window(board());
    hand.press(*window, Qt::LeftButton, place);
    const int moves = 1 + dice.below(8);
    const int interruption = dice.oneIn(10) ? dice.below(moves) : -1;
    for (int i = 0; i < moves && window; ++i) {
        place += dice.pointIn(reach);
        hand.move(*window, place);
        if (i == interruption)
            callSlot(*window, dice.of(interruptions));
    }
    if (dice.oneIn(8))
        say(u"hold"_s);
    else if (window)
        hand.release(*window, Qt::LeftButton, place);
}

/// Takes hold of what lies on the board.
void Monkey::edit(Dice &dice)
{
    const QPointer<BoardWindow> window(board());
    const CanvasView &canvas = canvasOf(*window);
    const auto items = canvas.scene()->items();
    if (items.isEmpty())
        return;
    const auto *const item = items.at(dice.below(int(items.size())));
    const QRectF shape = item->shape().boundingRect();
    const QPointF corner(dice.below(3) * shape.width() / 2, dice.below(3) * shape.height() / 2);
    const QPoint inside =
        canvas.mapFromScene(item->mapToScene(shape.topLeft() + corner * 0.98 + QPointF(1, 1)));
    const QPoint place = canvas.viewport()->mapTo(window, inside);
    if (!window->rect().contains(place))
        return;
    if (dice.oneIn(2))
        window->setCursorMode();
    const int what = dice.below(8);
    if (what == 0) {
        say(u"menu "_s + at(place));
        hand.click(*window, Qt::RightButton, place);
    } else if (what == 1) {
        say(u"double click "_s + at(place));
        hand.doubleClick(*window, place);
    } else if (what < 4) {
        say(u"text "_s + at(place));
        hand.click(*window, Qt::LeftButton, place);
        for (const char *letter = "hola que tal"; *letter && window; ++letter)
            hand.type(*window, *letter);
    } else {
        say(u"take "_s + at(place));
        drag(place, {-40, -40, 90, 90}, dice);
    }
}

void Monkey::chooseTool(Dice &dice)
{
    BoardWindow &window = *board();
    constexpr const char *others[] = {"ModoDeshacer", "ModoRehacer"};
    QString name = QString::fromLatin1(dice.of(modes).button);
    if (dice.oneIn(6))
        name = QString::fromLatin1(dice.of(others));
    if (dice.oneIn(2)) {
        clickButton(window, name);
        return;
    }
    say(u"space "_s + name);
    window.findChild<QWidget *>(name)->setFocus();
    hand.type(window, Qt::Key_Space);
}

void Monkey::callSlot(QObject &object, const char *name)
{
    say(u"call "_s + QString::fromLatin1(name));
    QMetaObject::invokeMethod(&object, name, Qt::DirectConnection);
}

/// Undoes and redoes as much as there is, at once; there is never more than the history holds.
void Monkey::goThroughHistory()
{
    constexpr int more = 20;
    constexpr int most = 9; // steps, since one of the ten is the baseline
    say(u"history"_s);
    const auto &scene = *canvasOf(*board()).scene();
    for (const auto slot : {&BoardWindow::undoMode, &BoardWindow::redoMode}) {
        int changes = 0;
        BoardSnapshot before = takeSnapshot(scene);
        for (int i = 0; i < more; ++i) {
            (board()->*slot)();
            const BoardSnapshot after = takeSnapshot(scene);
            changes += snapshotsEqual(after, before) ? 0 : 1;
            before = after;
        }
        // A redo history may have come together from several stays of the same ten.
        if (changes > most)
            Logbook::complain(u"the history holds no more than its limit, not %1"_s.arg(changes));
    }
}

/// Saves the board. Its name tells whether that was done; then the file of this name holds what lies on
/// the board.
void Monkey::saveBoard(Dice &dice)
{
    const QPointer<BoardWindow> window(board());
    say(u"save"_s);
    const auto *const label = window->findChild<QLabel *>(u"NombreProyectoTxt"_s);
    const QString before = label->text();
    const QString none = u"?"_s;
    window->showBoardName(none);
    if (dice.oneIn(2))
        window->saveBoardAs();
    else
        window->saveBoard();
    if (!window)
        return;
    if (label->text() == none)
        window->showBoardName(before);
    else if (const QString loss = lossOf(label->text()); !loss.isEmpty())
        Logbook::complain(u"a saved board is in its file: "_s + loss);
}

/// How the file \a name, which may lie in several folders, differs from the board.
QString Monkey::lossOf(const QString &name) const
{
    QString loss = u"there is no file "_s + name;
    QDirIterator files(homeFolder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext() && !loss.isEmpty()) {
        const QFileInfo file(files.next());
        if (file.isFile() && file.fileName() == name)
            loss = ::lossOf(*canvasOf(*board()).scene(), readFile(file.filePath()));
    }
    return loss;
}

void Monkey::present(Dice &dice)
{
    BoardWindow &window = *board();
    if (window.isFullScreen() && dice.oneIn(2)) {
        say(u"end presentation"_s);
        hand.type(window, Qt::Key_Escape);
    } else {
        say(u"present"_s);
        window.findChild<QComboBox *>(u"Presentar"_s)->setCurrentIndex(0);
    }
}

/// Clicks any widget that a person could use.
void Monkey::clickAny(QWidget &window, Dice &dice)
{
    QList<QWidget *> usable;
    const auto all = window.findChildren<QWidget *>();
    for (auto *const widget : all) {
        const bool isThere =
            widget->window() == &window && widget->isVisible() && widget->isEnabled();
        if (isThere && widget->focusPolicy() != Qt::NoFocus && !widget->visibleRegion().isEmpty())
            usable << widget;
    }
    if (usable.isEmpty())
        return;
    const QWidget &widget = *dice.of(usable);
    const QPoint place = widget.mapTo(&window, dice.pointIn(widget.visibleRegion().boundingRect()));
    say(u"click %1 %2"_s.arg(nameOf(widget), at(place)));
    hand.click(window, Qt::LeftButton, place);
}

void Monkey::clickButton(QWidget &window, const QString &name)
{
    say(u"click "_s + name);
    const auto *const button = window.findChild<QWidget *>(name);
    hand.click(window, Qt::LeftButton, button->mapTo(&window, button->rect().center()));
}

void Monkey::changeState(QWidget &window, Dice &dice)
{
    const QPointer<QWidget> self(&window);
    const int what = dice.below(12);
    if (what < 2) {
        say(u"minimise"_s);
        window.setWindowState(window.windowState() | Qt::WindowMinimized);
    } else if (what < 6) {
        // A window manager that has put a dialog away with its window brings neither back for the program.
        if (plan.realTime && QGuiApplication::modalWindow())
            return;
        say(u"restore"_s);
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        // The offscreen platform does not always know how large the window was.
        if (window.windowState() == Qt::WindowNoState && window.windowHandle())
            window.windowHandle()->resize(window.minimumSize());
    } else if (what < 8) {
        say(u"hide and show"_s);
        window.hide();
        QCoreApplication::processEvents();
        if (self)
            self->show();
    } else if (what < 9) {
        say(u"maximise"_s);
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    } else if (what < 11) {
        say(u"activate"_s);
        window.raise();
        window.activateWindow();
    } else {
        say(u"close"_s);
        closeByFrame(window);
    }
}

/// Closes \a window as the button in its frame does.
void Monkey::closeByFrame(QWidget &window)
{
    if (window.windowHandle())
        window.windowHandle()->close();
}

void Monkey::typeAnything(QWidget &window, Dice &dice)
{
    const QPointer<QWidget> self(&window);
    const int what = dice.below(8);
    if (what < 5) {
        const auto key = dice.of(keys);
        const auto modifiers = dice.oneIn(4) ? Qt::ShiftModifier : Qt::NoModifier;
        say(u"key %1"_s.arg(key, 0, 16));
        hand.type(window, key, modifiers);
    } else if (what < 7) {
        const auto key = dice.of(lettersWithControl);
        say(u"control %1"_s.arg(QChar(char16_t(key))));
        hand.type(window, key, Qt::ControlModifier);
    } else {
        say(u"type"_s);
        const int count = dice.oneIn(6) ? 320 : 5;
        for (int i = 0; i < count && self; ++i)
            hand.type(*self, char('a' + i % 26));
    }
}

void Monkey::dragAnything(QWidget &window, Dice &dice)
{
    QMimeData data;
    const int what = dice.below(5);
    if (what == 0)
        data.setText(u"Texto de otro programa\ncon dos líneas"_s);
    else if (what == 1)
        data.setUrls({QUrl::fromLocalFile(dice.of(litter.boards()))});
    else if (what == 2)
        data.setImageData(QImage(20, 20, QImage::Format_RGB32));
    else if (what == 3)
        data.setHtml(u"<h1>Título</h1><img src='x'>"_s);
    else
        data.setData(u"application/x-nada"_s, QByteArray(100, '\0'));
    const QPoint place = dice.pointIn(window.rect());
    const bool isDropped = !dice.oneIn(4);
    say(u"drop %1 %2"_s.arg(what).arg(at(place)));
    hand.drag(window, data, place, isDropped);
}

void Monkey::letTimePass(Dice &dice)
{
    constexpr int times[] = {20, 150, 400, 1000, 3000, 11000};
    const int time = dice.of(times);
    say(u"wait %1"_s.arg(time));
    pass(time);
    QCoreApplication::processEvents();
}

void Monkey::pass(int milliseconds) const
{
    if (plan.realTime) {
        constexpr int longest = 300; // ms
        QTest::qWait(qMin(milliseconds, longest));
    } else if constexpr (VirtualClock::isThere) {
        VirtualClock::advance(milliseconds);
    }
}

void Monkey::usePopup(QWidget &popup, Dice &dice)
{
    constexpr Qt::Key choices[] = {Qt::Key_Up,    Qt::Key_Down,   Qt::Key_Down, Qt::Key_Return,
                                   Qt::Key_Space, Qt::Key_Escape, Qt::Key_Tab};
    const int what = dice.below(10);
    if (what < 5) {
        const auto key = dice.of(choices);
        say(u"popup key %1"_s.arg(key, 0, 16));
        hand.type(popup, key);
    } else if (what < 8) {
        const QPoint place = dice.pointIn(popup.rect());
        say(u"popup click "_s + at(place));
        hand.click(popup, Qt::LeftButton, place);
    } else if (what < 9) {
        const QPoint place = dice.pointIn(popup.rect().adjusted(-80, -80, 80, 80));
        say(u"popup click outside "_s + at(place));
        hand.click(popup, Qt::LeftButton, place);
    } else {
        say(u"popup close"_s);
        popup.close();
    }
}

void Monkey::useDialog(QWidget &dialog, Dice &dice)
{
    if (dice.oneIn(8)) {
        // Those behind the dialog hear nothing of this.
        QWidget &behind =
            board() && board()->isVisible() ? static_cast<QWidget &>(*board()) : *home;
        say(u"behind the dialog"_s);
        useAnyWindow(behind, dice);
        return;
    }
    if (hand.held() && dice.oneIn(2)) {
        say(u"let go"_s);
        hand.releaseAll(dialog, {1, 1});
    }
    auto *const files = qobject_cast<QFileDialog *>(&dialog);
    auto *const box = qobject_cast<QMessageBox *>(&dialog);
    if (!files && !box) {
        waitFor(dialog, dice);
    } else if (--patience < 0) {
        say(u"dialog Escape"_s);
        hand.type(dialog, Qt::Key_Escape);
    } else if (files) {
        answer(*files, dice);
    } else {
        answer(*box, dice);
    }
}

/// Uses the windows while the program works: nobody hears of it.
void Monkey::waitForWork(Dice &dice)
{
    QWidget &window = board() && board()->isVisible() ? static_cast<QWidget &>(*board()) : *home;
    const QPoint place = dice.pointIn(window.rect());
    const int what = dice.below(3);
    say(u"while it works %1 %2"_s.arg(what).arg(at(place)));
    if (what == 0)
        hand.doubleClick(window, place);
    else if (what == 1)
        hand.type(window, dice.of(keys));
    else
        hand.releaseAll(window, place);
    constexpr int longer = 90; // ms
    pass(longer);
}

/// Of the dialog that tells of progress, which nobody can send away.
void Monkey::waitFor(QWidget &dialog, Dice &dice)
{
    if (dice.oneIn(4)) {
        say(u"dialog key"_s);
        hand.type(dialog, dice.of(keys));
    } else {
        letTimePass(dice);
    }
}

/// Nothing but names is tried: a file dialog deletes and renames files.
void Monkey::answer(QFileDialog &dialog, Dice &dice)
{
    const bool isPicture = dialog.nameFilters().constFirst().contains(u"png"_s);
    const QString name = dice.of(isPicture ? litter.pictures() : litter.boards());
    auto *const edit = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
    const int what = dice.below(10);
    if (what < 7) {
        say(u"file "_s + QFileInfo(name).fileName());
        edit->setText(name);
        edit->setFocus();
        hand.type(dialog, Qt::Key_Return);
    } else if (what < 8) {
        say(u"file without a name"_s);
        edit->clear();
        hand.type(dialog, Qt::Key_Return);
    } else if (what < 9) {
        say(u"file Escape"_s);
        hand.type(dialog, Qt::Key_Escape);
    } else {
        say(u"file close"_s);
        closeByFrame(dialog);
    }
}

void Monkey::answer(QMessageBox &box, Dice &dice)
{
    constexpr Qt::Key choices[] = {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space, Qt::Key_Tab};
    if (dice.oneIn(4)) {
        const auto key = dice.of(choices);
        say(u"box key %1"_s.arg(key, 0, 16));
        hand.type(box, key);
        return;
    }
    if (dice.oneIn(8)) {
        say(u"box close"_s);
        closeByFrame(box);
        return;
    }
    const auto *const button = dice.of(box.buttons());
    say(u"box %1"_s.arg(button->text()));
    hand.releaseAll(box, {1, 1});
    hand.click(box, Qt::LeftButton, button->mapTo(&box, button->rect().center()));
}
