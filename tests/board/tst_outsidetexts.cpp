// What stands in a board, in a file's name and on the clipboard is shown as it is, and leads nowhere.

#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/files/files.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"
#include "tests/support/system/watchedfile.h"

#include <QClipboard>
#include <QMimeData>
#include <QTcpServer>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A picture on this machine and a server, of which nobody should want anything.
class Baits
{
public:
    explicit Baits(const ScratchHome &home)
        : path(writePicture(home.path(u"rojo.png"_s)))
        , file(path)
    {
        if (!server.listen(QHostAddress::LocalHost))
            qFatal("The test cannot listen on this machine");
    }

    /// All ways to name them.
    QStringList addresses() const
    {
        const QString web = u"http://127.0.0.1:%1/rojo.png"_s.arg(server.serverPort());
        return {path, QUrl::fromLocalFile(path).toString(), web, u"//"_s + web.section(u'/', 2)};
    }
    /// As a page names pictures, styles and other pages.
    QString markup() const
    {
        QString text;
        for (const QString &address : addresses()) {
            text += u"<link rel='stylesheet' href='%1'><img src='%1'><iframe src='%1'></iframe>"
                    "<a href='%1'>x</a><script src='%1'></script>"_s.arg(address);
        }
        return text;
    }

    bool wereTaken()
    {
        QCoreApplication::processEvents();
        return server.hasPendingConnections() || server.waitForNewConnection(100)
            || file.wasTouched();
    }

private:
    static QString writePicture(const QString &path)
    {
        QImage picture(50, 50, QImage::Format_RGB32);
        picture.fill(Qt::red);
        if (!picture.save(path))
            qFatal("The test cannot save its picture");
        return path;
    }

    QString path;
    WatchedFile file;
    QTcpServer server;
};

/// Pastes a \a page into the note that lies at (100, 100).
void pasteIntoNote(ShownBoard &board, const QString &page)
{
    auto *const data = new QMimeData;
    data->setHtml(page);
    QGuiApplication::clipboard()->setMimeData(data);
    if (!QTest::qWaitForWindowActive(&board.window))
        qFatal("The board never appeared.");
    board.pointer.click({130, 120});
    QTest::keyClick(board.window.windowHandle(), Qt::Key_V, Qt::ControlModifier);
}

bool hasRed(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == QColor(Qt::red))
                return true;
        }
    }
    return false;
}

} // namespace

class TestOutsideTexts : public QObject
{
    Q_OBJECT

private slots:
    void nothingThatABoardNamesIsLoaded();
    void markupInANoteIsShownAsItWasTyped();
    void aPastedPageBringsNoPictures();
    void aPastedPageBringsNoStyles();
    void aQuestionShowsANameAsItWasTyped();
};

void TestOutsideTexts::nothingThatABoardNamesIsLoaded()
{
    const ScratchHome home;
    Baits baits(home);
    QJsonArray items{BoardFile::note(100, 100, baits.markup())};
    for (const QString &address : baits.addresses()) {
        items << BoardFile::note(500, 100, address);
        for (const auto *kind : {"postit", "freedraw", "arrow", "image", "link", "include"}) {
            QJsonObject item{{u"type"_s, QLatin1String(kind)}};
            for (const auto *key : {"text", "imageData", "path", "color", "penColor", "src", "href",
                                    "file", "url", "include", "style", "$ref"})
                item.insert(QLatin1String(key), address);
            items << item;
        }
        const QByteArray drawing =
            R"(<svg xmlns="http://www.w3.org/2000/svg" width="50" height="50">
            <image href=")"
            + address.toUtf8() + R"(" width="50" height="50"/></svg>)";
        items << BoardFile::image(100, 500, drawing);
    }
    const QString path = BoardFile::write(home.path(u"plan.vtrz"_s), items);

    ShownBoard board;
    board.window.loadBoard(path);
    board.window.grab();

    QVERIFY(board.count() > 20);
    QVERIFY(!baits.wereTaken());
}

void TestOutsideTexts::markupInANoteIsShownAsItWasTyped()
{
    const ScratchHome home;
    // As markup, both would look the same.
    const auto shown = [&home](const QString &text) {
        ShownBoard board;
        board.window.loadBoard(
            BoardFile::write(home.path(u"plan.vtrz"_s), {BoardFile::note(100, 100, text)}));
        if (board.only<StickyNoteItem>()->getText() != text)
            qFatal("The note holds another text.");
        QCoreApplication::processEvents();
        return board.view.grab().toImage();
    };
    QCOMPARE(shown(u"<p>x</p>"_s), shown(u"<p>x</p>"_s));
    QVERIFY(shown(u"<p>x</p>"_s) != shown(u"<div>x</div>"_s));
}

void TestOutsideTexts::aPastedPageBringsNoPictures()
{
    const ScratchHome home;
    Baits baits(home);
    ShownBoard board;
    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), {BoardFile::note(100, 100, u"Idea"_s)}));
    pasteIntoNote(board,
                  u"<p>Plan <img src='%1'></p>"_s.arg(baits.addresses().join(u"'><img src='"_s)));

    const QString text = board.only<StickyNoteItem>()->getText();
    QVERIFY2(text.contains(u"Plan"_s), qPrintable(text));
    QVERIFY(text.contains(QChar::ObjectReplacementCharacter)); // where the pictures would be
    QCoreApplication::processEvents();
    const QImage shown = board.view.grab().toImage();
    QVERIFY(!baits.wereTaken());
    QVERIFY(!hasRed(shown));
}

void TestOutsideTexts::aPastedPageBringsNoStyles()
{
    const ScratchHome home;
    const QString style = writeFile(home.path(u"rojo.css"_s), "p { color: red; font-size: 40pt }");
    WatchedFile file(style);
    ShownBoard board;
    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), {BoardFile::note(100, 100, u"Idea"_s)}));

    pasteIntoNote(board,
                  u"<html><head><link rel='stylesheet' type='text/css' href='%1'></head>"
                  "<body><p>Plan</p></body></html>"_s.arg(style));

    const QString text = board.only<StickyNoteItem>()->getText();
    QVERIFY2(text.contains(u"Plan"_s), qPrintable(text));
    QCoreApplication::processEvents();
    QVERIFY(!hasRed(board.view.grab().toImage()));
    QVERIFY(!file.wasTouched());
}

void TestOutsideTexts::aQuestionShowsANameAsItWasTyped()
{
    const ScratchHome home;
    const QString name = u"<b>plan<b>.vtrz"_s;
    BoardFile::write(home.path(name));
    ShownBoard board;
    const FileDialogAnswer dialog(home.path(name));
    auto format = Qt::AutoText;
    const ModalAnswer<QMessageBox> question([&format](QMessageBox &box) {
        format = box.textFormat();
        answerBox(box, u"No"_s);
    });

    board.click("GuardarComo");

    QVERIFY(dialog.seen());
    QVERIFY(question.seen());
    QCOMPARE(format, Qt::PlainText);
}

PLUMARA_TEST(TestOutsideTexts)
#include "tst_outsidetexts.moc"
