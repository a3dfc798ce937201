// Closing a board: the question, and what follows from each answer.

#include "tests/board/boardathome.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/look/markingtranslator.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"

#include <QPushButton>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Writes down which window is shown and which is closed.
class WindowEvents : public QObject
{
public:
    WindowEvents(QWidget &homeWindow, QWidget &boardWindow)
        : home(homeWindow)
        , board(boardWindow)
    {
        home.installEventFilter(this);
        board.installEventFilter(this);
    }

    QStringList events;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == &home && event->type() == QEvent::Show)
            events << QStringLiteral("home shown");
        if (watched == &board && event->type() == QEvent::Close)
            events << QStringLiteral("board closed");
        return false;
    }

private:
    QWidget &home;
    QWidget &board;
};

using Reply = void (*)(QMessageBox &box);

} // namespace

class TestClosing : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyUnchangedBoardClosesAtOnce();
    void theHomeWindowComesBeforeTheBoardGoes();
    void theHomeWindowComesWhereTheBoardWas();
    void anEmptyBoardThatChangedAsks();
    void aSavedBoardWithElementsAsksAndNoLosesNothing();
    void theQuestionOffersThreeAnswers();
    void onlyTheButtonsOfTheQuestionAreTranslated();

    void yesSavesABoardWithAFileWithoutADialog();
    void yesAsksForTheNameOfANewBoard();
    void yesClosesEvenWhenTheDialogIsCancelled();
    void yesClosesEvenWhenTheSaveFails();
    void noDiscardsTheChanges();
    void anyOtherAnswerCountsAsNo();
    void aCancelledCloseChangesNothing_data();
    void aCancelledCloseChangesNothing();
    void aCancelledCloseKeepsASavedBoardSaved();
};

void TestClosing::anEmptyUnchangedBoardClosesAtOnce()
{
    BoardAtHome at;
    const BoxAnswer question({});

    at.close();

    QVERIFY(at.closed());
    QVERIFY(!question.seen());
}

void TestClosing::theHomeWindowComesBeforeTheBoardGoes()
{
    BoardAtHome at;
    const WindowEvents seen(at.home, at.board.window);

    at.close();

    // The other way round, the board would be the last window and the program would end with it.
    QCOMPARE(seen.events, QStringList({u"home shown"_s, u"board closed"_s}));
}

void TestClosing::theHomeWindowComesWhereTheBoardWas()
{
    BoardAtHome at;
    // A place in which the window's height fits into the screen, and its frame too.
    const QPoint place(123, 41);
    at.board.window.move(place);

    at.close();

    QCOMPARE(at.home.pos(), place);
}

void TestClosing::anEmptyBoardThatChangedAsks()
{
    BoardAtHome at;
    at.board.window.setUnsaved(true);
    const BoxAnswer question(u"No"_s);

    at.close();

    QVERIFY(question.seen());
    QVERIFY(at.closed());
}

void TestClosing::aSavedBoardWithElementsAsksAndNoLosesNothing()
{
    BoardAtHome at;
    at.openPlan();
    at.board.window.saveBoard();
    QVERIFY(!at.board.marked());
    const QJsonArray saved = at.savedPlan();
    const BoxAnswer question(u"No"_s);

    at.close();

    QVERIFY(question.seen());
    QCOMPARE(question.box().text, u"Hay cambios sin guardar. ¿Deseas guardar antes de salir?"_s);
    QVERIFY(at.closed());
    QCOMPARE(at.savedPlan(), saved);
}

void TestClosing::theQuestionOffersThreeAnswers()
{
    BoardAtHome at;
    at.addNote();
    // Only recorded here: a comparison that fails would leave the question open for ever.
    BoxContents said;
    QStringList texts;
    QList<QMessageBox::ButtonRole> roles;
    bool modal = false;
    bool hasDefault = true;
    const ModalAnswer<QMessageBox> question([&](QMessageBox &box) {
        said = {box.windowTitle(), box.text(), box.icon(), {}, box.parentWidget()};
        modal = box.isModal();
        hasDefault = box.defaultButton();
        const auto buttons = box.findChildren<QPushButton *>();
        for (auto *const button : buttons) {
            texts << button->text();
            roles << box.buttonRole(button);
        }
        box.reject();
    });

    at.close();

    QVERIFY(question.seen());
    QCOMPARE(said.title, u"Guardar cambios"_s);
    QCOMPARE(said.text, u"Hay cambios sin guardar. ¿Deseas guardar antes de salir?"_s);
    QCOMPARE(said.icon, QMessageBox::Question);
    QCOMPARE(said.parent, &at.board.window);
    QVERIFY(modal);
    QVERIFY(!hasDefault);
    QCOMPARE(texts, QStringList({u"Sí"_s, u"No"_s, u"Cancelar"_s}));
    QCOMPARE(roles,
             QList<QMessageBox::ButtonRole>(
                 {QMessageBox::YesRole, QMessageBox::NoRole, QMessageBox::RejectRole}));
}

void TestClosing::onlyTheButtonsOfTheQuestionAreTranslated()
{
    BoardAtHome at;
    at.addNote();
    const MarkingTranslator translator("BoardWindow");
    const BoxAnswer question(u"<No>"_s);

    at.close();

    QVERIFY(at.closed());
    QCOMPARE(question.box().title, u"Guardar cambios"_s);
    QCOMPARE(question.box().text, u"Hay cambios sin guardar. ¿Deseas guardar antes de salir?"_s);
    QVERIFY(question.box().buttons.contains(u"<Sí>"_s));
    QVERIFY(question.box().buttons.contains(u"<Cancelar>"_s));
}

void TestClosing::yesSavesABoardWithAFileWithoutADialog()
{
    BoardAtHome at;
    at.openPlan();
    at.addNote();
    const BoxAnswer question(u"Sí"_s);
    const FileDialogAnswer dialog({});

    at.close();

    QVERIFY(question.seen());
    QVERIFY(!dialog.seen());
    QVERIFY(at.closed());
    QCOMPARE(at.savedPlan().size(), 2);
}

void TestClosing::yesAsksForTheNameOfANewBoard()
{
    BoardAtHome at;
    at.addNote();
    const BoxAnswer question(u"Sí"_s);
    const FileDialogAnswer dialog(u"plan"_s);

    at.close();

    QVERIFY(dialog.seen());
    QCOMPARE(dialog.dialog().caption, u"Guardar proyecto como"_s);
    QVERIFY(at.closed());
    QCOMPARE(at.savedPlan().size(), 1);
    QCOMPARE(at.board.name(), u"Pizarra1.vtrz"_s);
}

void TestClosing::yesClosesEvenWhenTheDialogIsCancelled()
{
    BoardAtHome at;
    at.addNote();
    const BoxAnswer question(u"Sí"_s);
    const FileDialogAnswer dialog({});

    at.close();

    QVERIFY(dialog.seen());
    QVERIFY(at.closed());
    QCOMPARE(QDir(at.folder.path()).entryList(QDir::Files), QStringList{});
}

void TestClosing::yesClosesEvenWhenTheSaveFails()
{
    BoardAtHome at;
    at.openPlan();
    QVERIFY(QFile::remove(at.folder.path(u"plan.vtrz"_s)));
    QVERIFY(QDir(at.folder.path()).mkdir(u"plan.vtrz"_s));
    const BoxSequence sequence({u"Sí"_s, u"OK"_s});

    at.close();

    QCOMPARE(sequence.boxes().size(), 2);
    QCOMPARE(sequence.boxes()[0].text,
             u"Hay cambios sin guardar. ¿Deseas guardar antes de salir?"_s);
    QCOMPARE(sequence.boxes()[1].text, u"No se pudo guardar el archivo."_s);
    QCOMPARE(sequence.boxes()[1].icon, QMessageBox::Warning);
    QVERIFY(at.closed());
}

void TestClosing::noDiscardsTheChanges()
{
    BoardAtHome at;
    at.openPlan();
    at.addNote();
    at.board.window.setUnsaved(true);
    const BoxAnswer question(u"No"_s);
    const FileDialogAnswer dialog({});

    at.close();

    QVERIFY(question.seen());
    QVERIFY(!dialog.seen());
    QVERIFY(at.closed());
    QCOMPARE(at.savedPlan().size(), 1);
}

void TestClosing::anyOtherAnswerCountsAsNo()
{
    BoardAtHome at;
    at.openPlan();
    at.addNote();
    at.board.window.setUnsaved(true);
    const ModalAnswer<QMessageBox> question([](QMessageBox &box) { box.done(42); });
    const FileDialogAnswer dialog({});

    at.close();

    QVERIFY(question.seen());
    QVERIFY(!dialog.seen());
    QVERIFY(at.closed());
    QCOMPARE(at.savedPlan().size(), 1);
}

void TestClosing::aCancelledCloseChangesNothing_data()
{
    QTest::addColumn<Reply>("reply");
    addRow<Reply>("Cancelar", [](QMessageBox &box) {
        const auto buttons = box.findChildren<QPushButton *>();
        for (auto *const button : buttons) {
            if (button->text() == u"Cancelar")
                button->click();
        }
    });
    addRow<Reply>("Escape",
                  [](QMessageBox &box) { QTest::keyClick(box.windowHandle(), Qt::Key_Escape); });
    addRow<Reply>("the box's frame", [](QMessageBox &box) { box.windowHandle()->close(); });
}

void TestClosing::aCancelledCloseChangesNothing()
{
    QFETCH(const Reply, reply);
    BoardAtHome at;
    at.openPlan();
    at.addNote();
    at.board.window.setUnsaved(true);
    const auto items = at.board.scene.items();
    const ModalAnswer<QMessageBox> question(reply);

    at.close();

    QVERIFY(question.seen());
    QVERIFY(at.board.window.isVisible());
    QVERIFY(!at.home.isVisible());
    QCOMPARE(at.board.scene.items(), items);
    at.board.window.updateTitleLabel();
    QCOMPARE(at.board.name(), u"plan.vtrz* (Sin guardar)"_s);
    at.board.window.saveBoard();
    QCOMPARE(at.savedPlan().size(), 2);
}

void TestClosing::aCancelledCloseKeepsASavedBoardSaved()
{
    BoardAtHome at;
    at.openPlan();
    const BoxAnswer question(u"Cancelar"_s);

    at.close();

    QVERIFY(question.seen());
    at.board.window.updateTitleLabel();
    QCOMPARE(at.board.name(), u"plan.vtrz"_s);
}

PLUMARA_TEST(TestClosing)
#include "tst_closing.moc"
