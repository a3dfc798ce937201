// The home window at the scale at which the process was started.

#include "tests/home/progresswatch.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/home/homewindow.h"
#include "tests/support/look/sharppictures.h"
#include "tests/support/look/textfit.h"
#include "tests/support/main/registeredtest.h"

#include <QListWidget>
#include <QProgressBar>
#include <QTabWidget>

#include <memory>

using namespace Qt::Literals::StringLiterals;

class TestHomeScaling : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { home.reset(); }

    void theWindowHasItsScale();
    void noTextIsCut();
    void aBoardInAnOrdinaryFolderIsReadWhole();
    void theProgressOfDeletingIsReadWhole();
    void picturesAreSharp();
    void iconsAreSharp();

private:
    std::unique_ptr<HomeWindow> home;
};

/// Lets every page and every tab of the help be laid out once.
void TestHomeScaling::init()
{
    home = std::make_unique<HomeWindow>();
    home->window.NavSettings();
    home->window.NavHelp();
    auto *const tabs = home->child<QTabWidget>(u"HelpWidget"_s);
    for (int i = tabs->count() - 1; i >= 0; --i) {
        tabs->setCurrentIndex(i);
        QCoreApplication::processEvents();
    }
    home->child(u"UpdateAdvisor"_s)->show();
    home->window.NavMain();
}

void TestHomeScaling::theWindowHasItsScale()
{
    const QByteArray scale = qgetenv("QT_SCALE_FACTOR");
    QCOMPARE(home->window.devicePixelRatioF(), scale.isEmpty() ? 1.0 : scale.toDouble());
}

void TestHomeScaling::noTextIsCut()
{
    QCOMPARE(TextFit::cutTexts(home->window).join(u", "), QString());
}

void TestHomeScaling::aBoardInAnOrdinaryFolderIsReadWhole()
{
    constexpr int textLeft = 60;
    const auto *const list = home->child<QListWidget>(u"listWidget"_s);
    QFont bold = list->font();
    bold.setBold(true);
    const qreal room = list->viewport()->width() - textLeft;
    QVERIFY(QFontMetricsF(bold, list)
                .horizontalAdvance(u"Planeación del segundo semestre, grupo de la mañana.vtrz"_s)
            <= room);
    const QString info =
        u"C:/Users/María Fernanda Hernández/Documents/OrvanePlumara - 05/03/2026 14:07"_s;
    QVERIFY(QFontMetricsF(list->font(), list).horizontalAdvance(TextFit::widest(info, list->font()))
            <= room);
}

void TestHomeScaling::theProgressOfDeletingIsReadWhole()
{
    const BoxSequence consent({u"Aceptar"_s});
    QList<bool> fits;
    const ProgressWatch hurried(home->window, home->dataPath());
    const Poll poll([this, &fits](Poll &) {
        const auto *const bar = home->window.findChild<QProgressBar *>();
        if (bar && bar->isVisible() && bar->value() > 0)
            fits << (TextFit::fits(*bar) && TextFit::fits(*bar->window()));
    });
    home->window.NavSettings();
    home->child(u"UpdateAdvisor"_s)->hide();

    home->click(u"DeleteAll"_s); // comes back when everything is deleted

    QVERIFY(fits.contains(true));
    QVERIFY(!fits.contains(false));
    QTRY_VERIFY(!home->window.isVisible());
}

void TestHomeScaling::picturesAreSharp()
{
    QCOMPARE(SharpPictures::blurred(home->window).join(u", "), QString());
}

void TestHomeScaling::iconsAreSharp()
{
    QStringList coarse = SharpPictures::coarseIcons(home->window);
    // Its picture is that of the empty check boxes, too, which show a picture in its own size; so
    // it cannot be larger than it is, and some versions of the toolkit do not take the larger one
    // of the two drawings for a scale between theirs.
    coarse.removeAll(u"CancelUpdate"_s);
    QCOMPARE(coarse.join(u", "), QString());
}

PLUMARA_TEST(TestHomeScaling)
#include "tst_homescaling.moc"
