// Draws, writes, erases, saves, presents and reads, with the events of a person's hands.
#include "tests/longuse/lesson.h"

#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/items/boardpointer.h"
#include "tests/support/system/virtualclock.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGraphicsTextItem>
#include <QImage>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int second = 1000; // ms

void require(bool isSo, const char *what)
{
    if (!isSo)
        qFatal("In a lesson: %s", what);
}

} // namespace

Lesson::Lesson(BoardsHome &theHome, int number)
    : home(theHome)
    , boardName(u"clase %1.vtrz"_s.arg(number % kinds + 1))
    , random(static_cast<quint32>(number % kinds))
{ }

void Lesson::give()
{
    prepareNewBoard();
    explain();
    present();
    saveAndClose();
    lookAtAnOldBoard();
    readHelpAndSettings();
    constexpr int whole = minutes * 60 * second;
    require(passed <= whole, "it takes longer than it may");
    pass(static_cast<int>(whole - passed));
}

void Lesson::prepareNewBoard()
{
    home.click(u"NewProject"_s);
    require(QTest::qWaitForWindowExposed(home.board()), "no board came up");
    drawStrokes(strokes / 3);
    writeNotes(3);
    drawArrows(4);
    insertPicture();
    QFile::remove(home.boardPath(boardName));
    const FileDialogAnswer answer(home.boardPath(boardName));
    choose("GuardarComo");
    require(answer.seen() && QFile::exists(home.boardPath(boardName)), "the board was not saved");
}

void Lesson::explain()
{
    drawStrokes(strokes / 3);
    choose("ModoBorrador");
    BoardPointer pointer(*home.board());
    for (int i = 0; i < 3; ++i) {
        const QPointF start = somewhere();
        pointer.drag({start, start + QPointF(40, 30), start + QPointF(90, 50)});
        pass(second);
    }
    for (const char *step : {"ModoDeshacer", "ModoDeshacer", "ModoDeshacer", "ModoDeshacer",
                             "ModoRehacer", "ModoRehacer"}) {
        choose(step);
        pass(second);
    }
    drawStrokes(strokes / 3);
}

void Lesson::present()
{
    auto &board = *home.board();
    board.findChild<QComboBox *>(u"Presentar"_s)->setCurrentIndex(0);
    pass(30 * second);
    require(board.isFullScreen(), "nothing was presented");
    QTest::keyClick(board.windowHandle(), Qt::Key_Escape);
    pass(second);
    require(!board.isFullScreen(), "the presentation did not end");
}

void Lesson::saveAndClose()
{
    changeAndClose(u"Sí"_s);
}

void Lesson::changeAndClose(const QString &answer)
{
    drawStrokes(1);
    const BoxAnswer question(answer);
    home.closeBoard();
    require(question.seen(), "nobody asked about the change");
    pass(5 * second);
}

void Lesson::lookAtAnOldBoard()
{
    home.window.showProjects();
    require(home.list()->count() > 0, "no board is listed");
    home.clickRow(home.list()->count() - 1);
    pass(20 * second);
    require(home.boardIsOpen() && home.boardItems() > 0, "the old board did not open");
    changeAndClose(u"No"_s);
}

void Lesson::readHelpAndSettings()
{
    home.click(u"NavHelpBtn"_s);
    auto *const pages = home.child<QTabWidget>(u"HelpWidget"_s);
    for (int i = 0; i < pages->count(); ++i) {
        pages->setCurrentIndex(i);
        pass(3 * second);
    }
    home.click(u"NavSettingsBtn"_s);
    pass(5 * second);
    home.click(u"ClearCacheBtn"_s);
    pass(5 * second);
    home.click(u"NavMainBtn"_s);
    pass(second);
}

void Lesson::drawStrokes(int count)
{
    choose("ModoLapiz");
    BoardPointer pointer(*home.board());
    for (int i = 0; i < count; ++i) {
        QPointF place = besideTexts();
        pointer.press(place);
        for (int move = 0; move < 40; ++move) {
            place += QPointF(random.bounded(9) - 3, random.bounded(9) - 4);
            pointer.move(place);
        }
        pointer.release(place);
        pass(second);
    }
}

void Lesson::writeNotes(int count)
{
    BoardPointer pointer(*home.board());
    for (int i = 0; i < count; ++i) {
        choose("ModoPostIt");
        pointer.click(somewhere());
        for (const char letter : "idea de la clase"_ba)
            QTest::keyClick(home.board()->windowHandle(), letter);
        pass(10 * second);
    }
}

void Lesson::drawArrows(int count)
{
    choose("ModoLinea");
    BoardPointer pointer(*home.board());
    for (int i = 0; i < count; ++i) {
        const QPointF start = somewhere();
        pointer.drag({start, start + QPointF(60, 20), start + QPointF(140, 60)});
        pass(2 * second);
    }
}

void Lesson::insertPicture()
{
    const QString path = home.path(u"foto.png"_s);
    if (!QFile::exists(path)) {
        QImage picture(640, 480, QImage::Format_RGB32);
        picture.fill(QColor(90, 160, 200));
        picture.save(path);
    }
    const FileDialogAnswer answer(path);
    choose("ModoImagen");
    require(answer.seen(), "nobody asked for a picture");
    pass(5 * second);
}

void Lesson::choose(const char *tool) const
{
    auto &board = *home.board();
    const auto *const button = board.findChild<QWidget *>(QString::fromLatin1(tool));
    QTest::mouseClick(board.windowHandle(), Qt::LeftButton, {},
                      button->mapTo(&board, button->rect().center()));
}

QPointF Lesson::somewhere()
{
    const auto &view = *home.board()->findChild<QGraphicsView *>(u"PizarraMain"_s);
    return view.mapToScene(150 + random.bounded(700), 120 + random.bounded(350));
}

QPointF Lesson::besideTexts()
{
    auto &view = *home.board()->findChild<QGraphicsView *>(u"PizarraMain"_s);
    QPointF place;
    do
        place = somewhere();
    while (dynamic_cast<QGraphicsTextItem *>(view.itemAt(view.mapFromScene(place))));
    return place;
}

void Lesson::pass(int milliseconds)
{
    passed += milliseconds;
    // In steps, as time goes by: a timer comes as often as it would.
    constexpr int step = 500;
    for (int rest = milliseconds; rest > 0; rest -= step) {
        VirtualClock::advance(qMin(rest, step));
        QCoreApplication::processEvents();
    }
}
