// Makes strokes, and puts them on scenes and into documents.
#include "bench/strokes.h"

#include "items/freedrawitem.h"

#include <QGraphicsScene>
#include <QJsonArray>
#include <QPen>
#include <QRandomGenerator>
#include <QTransform>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr quint32 seed = 2026;
constexpr qreal penWidth = 2; // scene units

qreal between(QRandomGenerator &random, qreal low, qreal high)
{
    return low + random.generateDouble() * (high - low);
}

QPainterPath walk(QRandomGenerator &random, int points)
{
    QPointF point;
    QPainterPath path(point);
    for (int i = 1; i < points; ++i) {
        point += QPointF(between(random, -1, 1), between(random, -1, 1));
        path.lineTo(point);
    }
    return path;
}

void addBareStroke(QGraphicsScene &scene, const QPainterPath &path)
{
    auto *const stroke = new QGraphicsPathItem(path);
    stroke->setPen(QPen(Qt::black, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    scene.addItem(stroke);
}

QJsonObject elementOf(const QPainterPath &path)
{
    QJsonArray points;
    for (int i = 0; i < path.elementCount(); ++i) {
        const auto point = path.elementAt(i);
        points << QJsonObject{
            {u"type"_s, static_cast<int>(point.type)}, {u"x"_s, point.x}, {u"y"_s, point.y}};
    }
    return {{u"path"_s, points},
            {u"penColor"_s, u"#000000"_s},
            {u"penWidth"_s, penWidth},
            {u"type"_s, u"freedraw"_s}};
}

} // namespace

QList<QPainterPath> Strokes::paths() const
{
    QRandomGenerator random(seed);
    QList<QPainterPath> paths;
    paths.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QPainterPath path = walk(random, points);
        const QRectF bounds = path.boundingRect();
        const QSizeF size(between(random, smallest.width(), largest.width()),
                          between(random, smallest.height(), largest.height()));
        const QPointF place(between(random, area.left(), area.right() - size.width()),
                            between(random, area.top(), area.bottom() - size.height()));
        QTransform fit = QTransform::fromTranslate(place.x(), place.y());
        fit.scale(size.width() / bounds.width(), size.height() / bounds.height());
        fit.translate(-bounds.x(), -bounds.y());
        paths << fit.map(path);
    }
    return paths;
}

void addStrokes(QGraphicsScene &scene, const QList<QPainterPath> &paths)
{
    for (const QPainterPath &path : paths) {
        auto *const stroke = new FreeDrawItem;
        stroke->setPath(path);
        scene.addItem(stroke);
    }
}

void addBareStrokes(QGraphicsScene &scene, const QList<QPainterPath> &paths)
{
    for (const QPainterPath &path : paths)
        addBareStroke(scene, path);
}

QJsonObject documentOf(const QList<QPainterPath> &paths)
{
    QJsonArray elements;
    for (const QPainterPath &path : paths)
        elements << elementOf(path);
    return {{u"items"_s, elements}};
}

void addBareStrokes(QGraphicsScene &scene, const QJsonObject &document)
{
    const QJsonArray elements = document[u"items"_s].toArray();
    for (const auto &element : elements) {
        const QJsonArray points = element[u"path"_s].toArray();
        QPainterPath path;
        for (const auto &point : points) {
            const QPointF place(point[u"x"_s].toDouble(), point[u"y"_s].toDouble());
            if (path.elementCount() == 0)
                path.moveTo(place);
            else
                path.lineTo(place);
        }
        addBareStroke(scene, path);
    }
}
