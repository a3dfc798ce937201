// Does with a board what a person may do, and holds it to what it promises.
#include "fuzz/boarddrill.h"

#include "board/boardgeometry.h"
#include "fuzz/fuzzing.h"
#include "history/boardrecorder.h"
#include "painting/canvasview.h"
#include "storage/boarddocument.h"

#include <QCoreApplication>
#include <QGraphicsScene>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainterPath>
#include <QPixmap>
#include <QScrollBar>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

using Stroke = std::pair<QPainterPath, QColor>; // in a snapshot

// Up to there, painting is exact to the last bit.
constexpr QRectF near(-1e4, -1e4, 2e4, 2e4);

constexpr QSize viewSize(240, 135); // pixels, for speed; the board shows in them as a whole

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
        QObject::connect(&scene, &QGraphicsScene::changed, &view, &CanvasView::showChanges);
        QObject::connect(&scene, &QGraphicsScene::changed, &view, [this](const auto &changed) {
            recorded = recorder.snapshotAfter(changed);
        });
        for (auto &item : items)
            scene.addItem(item.release());
        // It gets its size when it is painted for the first time.
        show();
        view.fitInView(BoardGeometry::board);
        show();
    }

    /// Lets the scene tell of its changes and paints what the view shows.
    void show()
    {
        QCoreApplication::processEvents();
        view.grab();
        if (near.contains(scene.itemsBoundingRect())) {
            CanvasFrame anew(view);
            anew.matchView();
            require(view.frame().picture() == anew.picture(), "the view shows the board as it is");
        }
        require(areSame(recorded, takeSnapshot(scene)), "the history knows the board as it is");
    }

    void showMiddleInFullSize()
    {
        view.resetTransform();
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
        return std::ranges::equal(one.states(), other.states(), [](const auto &a, const auto &b) {
            return ::areSame(a, b);
        });
    }

    BoardRecorder recorder{scene};
    BoardSnapshot recorded;
    CanvasView view{};
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

void saveAndOpen(const QGraphicsScene &scene)
{
    const QByteArray saved = buildBoardDocument(scene);
    QGraphicsScene reopened(BoardGeometry::board);
    for (auto &item : itemsInReverse(saved))
        reopened.addItem(item.release());
    require(buildBoardDocument(reopened) == saved, "an opened board is saved as it was");
    require(snapshotsEqual(takeSnapshot(reopened), storedPartOf(takeSnapshot(scene))),
            "an opened board is the saved one");
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
    board.showMiddleInFullSize();
    board.scroll();

    const auto erasable = board.scene.items(BoardGeometry::board, Qt::IntersectsItemShape);
    for (auto *const item : erasable) {
        if (!item->parentItem())
            delete item;
    }
    board.show();
}
