// Does with a board what a person may do, and holds it to what it promises.
#include "fuzz/boarddrill.h"

#include "board/boardgeometry.h"
#include "fuzz/fuzzing.h"
#include "history/boardrecorder.h"
#include "items/boarditems.h"
#include "painting/canvasview.h"
#include "storage/boarddocument.h"

#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainterPath>
#include <QPixmap>
#include <QRegularExpression>
#include <QScrollBar>

#include <algorithm>
#include <cstdlib>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

using Stroke = std::pair<QPainterPath, QColor>; // in a snapshot

constexpr QSize viewSize(128, 72); // pixels, for speed; the board shows in them as a whole

/// Whether the toolkit can tell where all items of \a scene are: it loses those that are far away,
/// and hairlines that are thinner than the place that they lie at can say.
bool isEverythingInPlace(const QGraphicsScene &scene)
{
    const QRectF near = BoardGeometry::board.adjusted(-1000, -1000, 1000, 1000);
    const auto isWide = [](qreal extent) { return extent == 0 || extent > 1e-6; };
    const auto items = scene.items();
    return std::ranges::all_of(items, [&](const auto *item) {
        const QRectF place = item->sceneBoundingRect();
        bool inPlace = near.contains(place) && isWide(place.width()) && isWide(place.height());
        if (const auto *const stroke = dynamic_cast<const FreeDrawItem *>(item))
            inPlace = inPlace && near.contains(stroke->path().controlPointRect());
        if (const auto *const arrow = dynamic_cast<const ArrowLineItem *>(item))
            inPlace =
                inPlace && near.contains(arrow->line().p1()) && near.contains(arrow->line().p2());
        return inPlace;
    });
}

/// Whether two pictures are the same but for what blending rounds, where strokes cross and at the edges
/// of small letters.
bool lookAlike(const QImage &one, const QImage &other)
{
    constexpr int rounding = 24;
    return one.sizeInBytes() == other.sizeInBytes()
        && std::equal(one.constBits(), one.constBits() + one.sizeInBytes(), other.constBits(),
                      [](int a, int b) { return std::abs(a - b) <= rounding; });
}

/// A board with its view and its recorder, wired as in the board's window.
class Board
{
public:
    explicit Board(std::vector<std::unique_ptr<QGraphicsItem>> items)
    {
        view.setRenderHint(QPainter::Antialiasing);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.resize(viewSize);
        view.setScene(&scene);
        // It gets its size when it is painted for the first time.
        view.grab();
        view.fitInView(BoardGeometry::board);
        QObject::connect(&scene, &QGraphicsScene::changed, &view, &CanvasView::showChanges);
        QObject::connect(&scene, &QGraphicsScene::changed, &view, [this](const auto &changed) {
            recorded = recorder.snapshotAfter(changed);
        });
        for (auto &item : items)
            scene.addItem(item.release());
        show();
    }

    /// Lets the scene tell of its changes and paints what the view shows.
    void show()
    {
        QCoreApplication::processEvents();
        view.grab();
        if (isEverythingInPlace(scene)) {
            CanvasFrame anew(view);
            anew.matchView();
            require(lookAlike(view.frame().picture(), anew.picture()),
                    "the view shows the board as it is");
        }
        require(areSame(recorded, takeSnapshot(scene)), "the history knows the board as it is");
    }

    void showMiddle()
    {
        constexpr qreal scale = 0.25; // for speed
        view.resetTransform();
        view.scale(scale, scale);
        view.centerOn(BoardGeometry::board.center());
        show();
    }

    void scroll()
    {
        view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->value() + 11);
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->value() - 5);
        show();
    }

    QGraphicsScene scene{BoardGeometry::board};

private:
    static bool areSame(const BoardSnapshot &one, const BoardSnapshot &other)
    {
        return std::ranges::equal(one.states(), other.states(),
                                  [](const auto &a, const auto &b) { return ::areSame(a, b); });
    }

    BoardRecorder recorder{scene};
    BoardSnapshot recorded;
    CanvasView view;
};

/// The items of the document \a text in reverse: among items of one kind, the topmost of a saved
/// board is the lowest of the opened one.
std::vector<std::unique_ptr<QGraphicsItem>> itemsInReverse(const QByteArray &text)
{
    auto items = itemsOf(QJsonDocument::fromJson(text).object());
    std::ranges::reverse(items);
    return items;
}

/// What a file keeps of \a snapshot: all but strokes without a path, and colours as red, green and
/// blue.
BoardSnapshot storedPartOf(const BoardSnapshot &snapshot)
{
    BoardSnapshot stored;
    for (auto state : snapshot.states()) {
        if (state.data.canConvert<Stroke>()) {
            auto [path, color] = state.data.value<Stroke>();
            if (path.isEmpty())
                continue;
            state.data = QVariant::fromValue(Stroke(path, QColor(color.rgb())));
        }
        stored.append(state);
    }
    return stored;
}

void point(QGraphicsScene &scene, QEvent::Type what, QPointF place, Qt::MouseButtons pressed)
{
    QGraphicsSceneMouseEvent event(what);
    event.setScenePos(place);
    event.setButton(what == QEvent::GraphicsSceneMouseMove ? Qt::NoButton : Qt::LeftButton);
    event.setButtons(pressed);
    event.setButtonDownScenePos(Qt::LeftButton, place);
    QCoreApplication::sendEvent(&scene, &event);
}

/// Takes hold of \a item near its lower right corner, where a selected picture has a handle, and
/// drags it a little, if a person could do so.
void drag(QGraphicsScene &scene, const QGraphicsItem &item)
{
    const QPointF corner = item.mapToScene(item.shape().controlPointRect().bottomRight());
    const QPointF place = corner - QPointF(2, 2);
    if (!BoardGeometry::board.contains(place))
        return;
    point(scene, QEvent::GraphicsSceneMousePress, place, Qt::LeftButton);
    point(scene, QEvent::GraphicsSceneMouseMove, place + QPointF(-9, -5), Qt::LeftButton);
    point(scene, QEvent::GraphicsSceneMouseRelease, place + QPointF(-9, -5), Qt::NoButton);
}

QByteArray withoutPictures(const QByteArray &document)
{
    static const QRegularExpression data(u"(\"imageData\": \")[^\"]*"_s);
    return QString::fromUtf8(document).replace(data, u"\\1"_s).toUtf8();
}

/// Opens the document \a saved of the board \a scene, and saves it again.
QByteArray openAndSave(const QGraphicsScene &scene, const QByteArray &saved)
{
    QGraphicsScene reopened(BoardGeometry::board);
    for (auto &item : itemsInReverse(saved))
        reopened.addItem(item.release());
    require(snapshotsEqual(takeSnapshot(reopened), storedPartOf(takeSnapshot(scene))),
            "an opened board is the saved one");
    return buildBoardDocument(reopened);
}

void saveAndOpen(const QGraphicsScene &scene)
{
    const QByteArray first = buildBoardDocument(scene);
    const QByteArray second = openAndSave(scene, first);
    if (second == first)
        return;
    // A picture's file tells more than its pixels, and not all of it outlives the first saving.
    require(withoutPictures(second) == withoutPictures(first),
            "an opened board is saved as it was");
    require(openAndSave(scene, second) == second, "a board that was saved and opened stays");
}

} // namespace

void drillBoard(std::vector<std::unique_ptr<QGraphicsItem>> items)
{
    Board board(std::move(items));
    saveAndOpen(board.scene);

    const auto all = board.scene.items();
    for (auto *const item : all)
        item->setSelected(true);
    board.show();
    for (auto *const item : all) {
        if (item->flags().testFlag(QGraphicsItem::ItemIsMovable))
            item->moveBy(7, -3);
    }
    board.show();
    board.showMiddle();
    board.scroll();

    constexpr qsizetype few = 8;
    for (const auto *const item : all.first(std::min(few, all.size())))
        drag(board.scene, *item);
    board.show();

    const auto erasable = board.scene.items(BoardGeometry::board, Qt::IntersectsItemShape);
    for (auto *const item : erasable) {
        if (!item->parentItem())
            delete item;
    }
    board.show();
}
