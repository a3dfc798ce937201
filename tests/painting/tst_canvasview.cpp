// The view of the board, when nothing happens: it rests.

#include "painting/canvasview.h"

#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QGraphicsScene>
#include <QTest>
#include <QTimer>

#include <algorithm>

class TestCanvasView : public QObject
{
    Q_OBJECT

private slots:
    void itShowsItsPicture();
    void itRestsWhenAllIsPrepared();
    void itRestsWhileItIsHidden();
};

namespace {

/// A view of a few strokes, which it prepares once the hand rests.
class ShownView
{
public:
    ShownView()
    {
        for (int i = 0; i < 5; ++i)
            addStroke(scene, {{0, 10.0 * i}, {150, 10.0 * i + 5}});
        view.setScene(&scene);
        view.setAttribute(Qt::WA_DontShowOnScreen);
        view.resize(160, 120);
        view.show();
        view.grab(); // paints it, as coming on the screen would
    }

    bool isWaiting() const
    {
        const auto timers = view.findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        return std::ranges::any_of(timers, &QTimer::isActive);
    }

    QGraphicsScene scene;
    CanvasView view;
};

} // namespace

void TestCanvasView::itShowsItsPicture()
{
    ShownView shown;
    const auto isShown = [&shown] {
        const QImage seen = shown.view.viewport()->grab().toImage();
        return seen.convertToFormat(QImage::Format_RGB32) == shown.view.frame().picture();
    };
    QVERIFY(isShown());
    addStroke(shown.scene, {{10, 100}, {100, 10}});
    shown.view.showChanges({shown.scene.sceneRect()});
    QVERIFY(isShown());
    shown.view.scale(2, 2);
    QVERIFY(isShown());
}

void TestCanvasView::itRestsWhenAllIsPrepared()
{
    const ShownView shown;
    QVERIFY(shown.view.frame().canPrepare());
    QVERIFY(shown.isWaiting());
    QTRY_VERIFY(!shown.view.frame().canPrepare());
    QTRY_VERIFY(!shown.isWaiting());
}

void TestCanvasView::itRestsWhileItIsHidden()
{
    ShownView shown;
    QVERIFY(shown.isWaiting());
    shown.view.hide();
    QVERIFY(!shown.isWaiting());
    QCOMPARE(shown.view.frame().bytes(), 0);
}

PLUMARA_TEST(TestCanvasView)
#include "tst_canvasview.moc"
